#pragma once

#include <QString>
#include <QStringList>

namespace hipico {

class Db;
struct ServerConfig;

// The statements of an SQL script, split at the semicolons that end them
// (quotes and comments respected), comments removed.
QStringList sentenciasSql(const QString& script);
// Runs every statement of a script on a connection.
void ejecutarScript(Db& db, const QString& script);

// The texts of the central schema and of the betting-centre schema.
QString scriptCentral();
QString scriptHipicos();

// Creates a schema on the server and runs the script in it. With replace,
// an existing schema of that name is dropped first; without it, an existing
// schema is an error.
void crearEsquema(const ServerConfig& servidor, const QString& script, bool reemplazar);

// A connection text to the server of a deployment with no schema chosen
// (for creating and dropping schemas).
QString cadenaAdministracion(const ServerConfig& servidor);

}  // namespace hipico
