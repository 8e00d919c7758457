#include "core/Network.h"

#include "core/Dialogs.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QTimer>

namespace hipico {

namespace {

bool interfazActiva(const QNetworkInterface& i) {
    const auto f = i.flags();
    return (f & QNetworkInterface::IsUp) && (f & QNetworkInterface::IsRunning) &&
           !(f & QNetworkInterface::IsLoopBack) && !i.addressEntries().isEmpty();
}

}  // namespace

bool HayInternet() {
    const auto interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface& i : interfaces)
        if (interfazActiva(i)) return true;
    return false;
}

QString Gurl(const QString& url, int timeoutMs) {
    QNetworkAccessManager manager;
    manager.setProxy(QNetworkProxy::NoProxy);
    manager.setCache(nullptr);
    QNetworkRequest request{QUrl(url)};
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("vb wininet"));
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setTransferTimeout(timeoutMs);
    QNetworkReply* reply = manager.get(request);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeoutMs + 500, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) loop.exec();
    QString body;
    if (reply->isFinished() && reply->error() == QNetworkReply::NoError) body = QString::fromLatin1(reply->readAll());
    reply->abort();
    reply->deleteLater();
    return body;
}

bool EsIpValida(const QString& texto) {
    const QStringList partes = texto.split(QLatin1Char('.'));
    if (partes.size() != 4) return false;
    static const QRegularExpression numero(QStringLiteral("^[0-9]{1,3}$"));
    for (const QString& p : partes) {
        if (!numero.match(p).hasMatch()) return false;
        if (p.toInt() > 255) return false;
    }
    return true;
}

QString preguntarIpPublica(const QString& servicios, int timeoutMs) {
    const QStringList direcciones = servicios.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QString texto;
    for (const QString& direccion : direcciones) {
        texto = Gurl(direccion, timeoutMs).trimmed();
        if (EsIpValida(texto)) break;
    }
    return texto;
}

QString IpPublica(const QString& servicios, Dialogs& dialogs, int timeoutMs) {
    const QString texto = preguntarIpPublica(servicios, timeoutMs);
    if (texto.isEmpty())
        dialogs.refuse(kTituloSinInternet, kSinInternet);
    return texto;
}

QString DireccionMac() {
    QString mac;
    const auto interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface& i : interfaces) {
        const auto f = i.flags();
        if (!(f & QNetworkInterface::IsUp) || (f & QNetworkInterface::IsLoopBack)) continue;
        if (i.addressEntries().isEmpty() || i.hardwareAddress().isEmpty()) continue;
        mac = i.hardwareAddress().toUpper();
    }
    return mac;
}

}  // namespace hipico
