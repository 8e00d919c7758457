#pragma once

#include <QString>
#include <QStringList>

namespace hipico {

// Where one database server is reached.
struct ServerConfig {
    QString host = QStringLiteral("localhost");
    QString usuario = QStringLiteral("root");
    QString clave = QStringLiteral("pqr482");
    QString base;
    int puerto = 3306;
    // Further servers ("host:port"), tried in turn when this one cannot be
    // reached: the other nodes of a cluster.
    QStringList respaldo;
};

// Deployment values, read from hipico.ini.
struct Config {
    ServerConfig servidor{QStringLiteral("localhost"), QStringLiteral("root"), QStringLiteral("pqr482"),
                          QStringLiteral("hipico"), 3306, {}};
    ServerConfig hipicos{QStringLiteral("localhost"), QStringLiteral("root"), QStringLiteral("pqr482"),
                         QStringLiteral("hipicos"), 3306, {}};
    // The local report schema lives on this machine's own server.
    QString localBase = QStringLiteral("bd_tarvimo");
    QString localClave = QStringLiteral("pqr482");
    int localPuerto = 3306;
    // Three public-address services, separated by blanks.
    QString serviciosIp;
    int esperaRedMs = 3000;
    // Address of the secondary server written into a new local settings row.
    QString ipSecundaria;
    // Folder of the per-machine files (the booth's sale unit and the like).
    QString carpetaLocal;
    // Folder of the report templates ("" : the Reportes folder beside the program).
    QString carpetaReportes;
    // The file this configuration came from ("" when built in code).
    QString archivo;

    // Reads a hipico.ini; missing keys keep their defaults.
    static Config load(const QString& path);
    // The file to use: --config FILE, else hipico.ini beside the program,
    // else the user's configuration folder. "" when there is none.
    static QString locate(const QStringList& arguments);
};

}  // namespace hipico
