#include "schema/SchemaLoader.h"

#include "core/Config.h"
#include "core/Connections.h"
#include "core/Db.h"

#include <QFile>
#include <QRegularExpression>

static void initSchemaResources() { Q_INIT_RESOURCE(schema); }

namespace hipico {

QStringList sentenciasSql(const QString& script) {
    QStringList out;
    QString actual;
    QChar comilla;
    // A line "DELIMITER $$" ends the statements with "$$" from there on, as
    // the command-line client reads it: a trigger's body holds ";" of its own.
    QString fin = QStringLiteral(";");
    static const QRegularExpression delimitador(QStringLiteral("[ \\t]*DELIMITER[ \\t]+(\\S+)[ \\t]*(\\n|$)"),
                                                QRegularExpression::CaseInsensitiveOption);
    for (int i = 0; i < script.size(); ++i) {
        const QChar c = script.at(i);
        if (!comilla.isNull()) {
            actual.append(c);
            if (c == comilla) comilla = QChar();
            else if (c == QLatin1Char('\\') && i + 1 < script.size()) actual.append(script.at(++i));
            continue;
        }
        if (actual.trimmed().isEmpty() && (i == 0 || script.at(i - 1) == QLatin1Char('\n'))) {
            const QRegularExpressionMatch m = delimitador.match(script, i, QRegularExpression::NormalMatch,
                                                                QRegularExpression::AnchorAtOffsetMatchOption);
            if (m.hasMatch()) {
                fin = m.captured(1);
                i = m.capturedEnd() - 1;
                actual.clear();
                continue;
            }
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('`')) {
            comilla = c;
            actual.append(c);
        } else if (c == QLatin1Char('-') && i + 1 < script.size() && script.at(i + 1) == QLatin1Char('-')) {
            while (i < script.size() && script.at(i) != QLatin1Char('\n')) ++i;
            actual.append(QLatin1Char('\n'));
        } else if (QStringView(script).mid(i, fin.size()) == fin) {
            if (!actual.trimmed().isEmpty()) out << actual.trimmed();
            actual.clear();
            i += fin.size() - 1;
        } else {
            actual.append(c);
        }
    }
    if (!actual.trimmed().isEmpty()) out << actual.trimmed();
    return out;
}

void ejecutarScript(Db& db, const QString& script) {
    for (const QString& s : sentenciasSql(script)) db.exec(s.toStdString());
}

namespace {

QString leerRecurso(const QString& ruta) {
    initSchemaResources();
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly)) throw DbError("no se encontró " + ruta.toStdString());
    return QString::fromUtf8(f.readAll());
}

}  // namespace

QString scriptCentral() { return leerRecurso(QStringLiteral(":/schema/central.sql")); }
QString scriptHipicos() { return leerRecurso(QStringLiteral(":/schema/hipicos.sql")); }

QString cadenaAdministracion(const ServerConfig& s) {
    return "DRIVER={MariaDB ODBC 3.2 Driver};TCPIP=1;SERVER=" + s.host + ";UID=" + s.usuario + ";PWD=" + s.clave +
           ";PORT=" + QString::number(s.puerto) + ";CHARSET=utf8mb4;";
}

void crearEsquema(const ServerConfig& servidor, const QString& script, bool reemplazar) {
    static const QRegularExpression valido(QStringLiteral("^[A-Za-z0-9_]+$"));
    if (!valido.match(servidor.base).hasMatch())
        throw DbError("nombre de esquema no válido: " + servidor.base.toStdString());
    {
        auto admin = Db::open(cadenaAdministracion(servidor));
        if (reemplazar) admin->exec(("DROP DATABASE IF EXISTS `" + servidor.base + "`").toStdString());
        admin->exec(("CREATE DATABASE `" + servidor.base + "` CHARACTER SET utf8mb4 COLLATE utf8mb4_general_ci")
                        .toStdString());
    }
    auto db = Db::open(cadenaCentral(servidor));
    ejecutarScript(*db, script);
}

}  // namespace hipico
