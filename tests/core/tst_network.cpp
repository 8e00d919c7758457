// Public address lookup against a small HTTP server started by the test.
#include "core/Dialogs.h"
#include "core/Network.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

using namespace hipico;

namespace {

// Answers GET /<path> with the body configured for that path and counts the requests.
class TinyHttp : public QObject {
public:
    TinyHttp() {
        server.listen(QHostAddress::LocalHost, 0);
        connect(&server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* s = server.nextPendingConnection()) {
                connect(s, &QTcpSocket::readyRead, s, [this, s] {
                    const QByteArray request = s->readAll();
                    const QList<QByteArray> firstLine = request.split('\n').value(0).split(' ');
                    const QString path = QString::fromLatin1(firstLine.value(1)).mid(1);
                    hits[path] += 1;
                    if (request.contains("User-Agent: vb wininet")) agentSeen = true;
                    const QByteArray body = bodies.value(path).toUtf8();
                    s->write("HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nConnection: close\r\nContent-Length: " +
                             QByteArray::number(body.size()) + "\r\n\r\n" + body);
                    s->disconnectFromHost();
                });
            }
        });
    }
    QString url(const QString& path) const { return QString("http://127.0.0.1:%1/%2").arg(server.serverPort()).arg(path); }

    QTcpServer server;
    QHash<QString, QString> bodies;
    QHash<QString, int> hits;
    bool agentSeen = false;
};

QString closedPort() {
    QTcpServer s;
    s.listen(QHostAddress::LocalHost, 0);
    const quint16 port = s.serverPort();
    s.close();
    return QString("http://127.0.0.1:%1/nadie").arg(port);
}

}  // namespace

class TstNetwork : public QObject {
    Q_OBJECT

private slots:
    void esIpValida_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<bool>("valida");
        QTest::newRow("max") << "255.255.255.255" << true;
        QTest::newRow("ordinary") << "190.202.1.5" << true;
        QTest::newRow("leading zero") << "01.2.3.4" << true;
        QTest::newRow("300") << "300.1.1.1" << false;
        QTest::newRow("three parts") << "1.2.3" << false;
        QTest::newRow("five parts") << "1.2.3.4.5" << false;
        QTest::newRow("letters") << "a.b.c.d" << false;
        QTest::newRow("empty part") << "1..2.3" << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("error page") << "<html><body>Error 502</body></html>" << false;
    }

    void esIpValida() {
        QFETCH(QString, texto);
        QFETCH(bool, valida);
        QCOMPARE(EsIpValida(texto), valida);
    }

    void firstValidAnswerStopsTheSearch() {
        TinyHttp http;
        http.bodies["a"] = "190.202.1.5\n";
        http.bodies["b"] = "8.8.8.8";
        ScriptedDialogs d;
        const QString servicios = http.url("a") + " " + http.url("b") + " " + http.url("b");
        QCOMPARE(IpPublica(servicios, d, 3000), QString("190.202.1.5"));
        QCOMPARE(http.hits.value("b"), 0);
        QVERIFY(http.agentSeen);
        QCOMPARE(d.count(), 0);
    }

    void errorPageIsSkipped() {
        TinyHttp http;
        http.bodies["error"] = "<html>Service Unavailable</html>";
        http.bodies["malo"] = "300.1.1.1";
        http.bodies["bueno"] = "200.44.32.12";
        ScriptedDialogs d;
        const QString servicios = http.url("error") + " " + http.url("malo") + " " + http.url("bueno");
        QCOMPARE(IpPublica(servicios, d, 3000), QString("200.44.32.12"));
        QCOMPARE(http.hits.value("error"), 1);
        QCOMPARE(http.hits.value("malo"), 1);
        QCOMPARE(d.count(), 0);
    }

    void unreachableServiceFallsThrough() {
        TinyHttp http;
        http.bodies["bueno"] = "200.44.32.12";
        ScriptedDialogs d;
        QCOMPARE(IpPublica(closedPort() + " " + http.url("bueno") + " " + closedPort(), d, 3000),
                 QString("200.44.32.12"));
        QCOMPARE(d.count(), 0);
    }

    void lastInvalidAnswerIsReturnedAsItIs() {
        TinyHttp http;
        http.bodies["x"] = "";
        http.bodies["y"] = "no es una ip";
        ScriptedDialogs d;
        QCOMPARE(IpPublica(http.url("x") + " " + closedPort() + " " + http.url("y"), d, 3000), QString("no es una ip"));
        QCOMPARE(d.count(), 0);
    }

    void nothingAnswersTellsTheUserOnce() {
        TinyHttp http;
        http.bodies["vacio"] = "";
        ScriptedDialogs d;
        QCOMPARE(IpPublica(closedPort() + " " + closedPort() + " " + http.url("vacio"), d, 3000), QString());
        QCOMPARE(d.count(), 1);
        QCOMPARE(d.last().title, QString("Ups!"));
        QCOMPARE(d.last().text, QString("Checkee su internet por favor, parece que esta fallando."));
        QCOMPARE(d.last().icon, Icon::Critical);
    }

    void machineAddressIsAHardwareAddress() {
        const QString mac = DireccionMac();
        if (mac.isEmpty()) QSKIP("this machine has no enabled network interface");
        QVERIFY(QRegularExpression("^([0-9A-F]{2}:){5}[0-9A-F]{2}$").match(mac).hasMatch());
    }
};

QTEST_GUILESS_MAIN(TstNetwork)
#include "tst_network.moc"
