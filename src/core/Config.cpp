#include "core/Config.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace hipico {

namespace {

void readServer(QSettings& ini, const QString& section, ServerConfig& s) {
    ini.beginGroup(section);
    s.host = ini.value("host", s.host).toString();
    s.usuario = ini.value("usuario", s.usuario).toString();
    s.clave = ini.value("clave", s.clave).toString();
    s.base = ini.value("base", s.base).toString();
    s.puerto = ini.value("puerto", s.puerto).toInt();
    s.respaldo.clear();
    for (const QString& r : ini.value("respaldo").toString().split(',', Qt::SkipEmptyParts))
        if (!r.trimmed().isEmpty()) s.respaldo << r.trimmed();
    ini.endGroup();
}

}  // namespace

Config Config::load(const QString& path) {
    Config c;
    c.archivo = path;
    QSettings ini(path, QSettings::IniFormat);
    readServer(ini, "servidor", c.servidor);
    readServer(ini, "hipicos", c.hipicos);
    ini.beginGroup("local");
    c.localBase = ini.value("base", c.localBase).toString();
    c.localClave = ini.value("clave", c.localClave).toString();
    c.localPuerto = ini.value("puerto", c.localPuerto).toInt();
    c.carpetaLocal = ini.value("carpeta", c.carpetaLocal).toString();
    ini.endGroup();
    ini.beginGroup("red");
    // QSettings splits unquoted texts at commas; the list is one text of blank-separated addresses.
    const QVariant servicios = ini.value("servicios_ip", c.serviciosIp);
    c.serviciosIp = servicios.typeId() == QMetaType::QStringList ? servicios.toStringList().join(' ') : servicios.toString();
    c.esperaRedMs = ini.value("espera_ms", c.esperaRedMs).toInt();
    c.ipSecundaria = ini.value("ip_secundaria", c.ipSecundaria).toString();
    ini.endGroup();
    c.carpetaReportes = ini.value("reportes/carpeta", c.carpetaReportes).toString();
    if (c.carpetaLocal.isEmpty()) c.carpetaLocal = QFileInfo(path).absolutePath();
    return c;
}

QString Config::locate(const QStringList& arguments) {
    const int i = static_cast<int>(arguments.indexOf(QStringLiteral("--config")));
    if (i >= 0 && i + 1 < arguments.size()) return arguments.at(i + 1);
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath("hipico.ini");
    if (QFileInfo::exists(beside)) return beside;
    const QString user =
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)).filePath("hipico.ini");
    if (QFileInfo::exists(user)) return user;
    return {};
}

}  // namespace hipico
