#pragma once

#include <QString>
#include <QStringList>

namespace hipico {

class Context;
struct Config;
struct ServerConfig;

// The connection texts, built from the deployment values.
QString cadenaServidor(const Config& c);
// The central connection text for any server of that kind.
QString cadenaCentral(const ServerConfig& s);
// The central server's further nodes (ServerConfig::respaldo) as connection texts.
QStringList cadenasRespaldo(const ServerConfig& s);
QString cadenaLocal(const Config& c);
QString cadenaHipicos(const Config& c);
// The two texts with which the local report schema is created (no schema
// named, and the schema named).
QString cadenaLocalSinBase(const Config& c);
QString cadenaLocalConBase(const Config& c);

inline const QString kMensajeConexion =
    QStringLiteral(" HA OCURRIDO UN ERROR CON LA CONEXIÓN, REVISE LA CONEXION DE INTERNET ");
inline const QString kTituloConexion = QStringLiteral("CONEXION CON EL SERVIDOR");

// Opens a fresh central connection. On failure it tells the user once (no
// retry) and leaves cnServidor unopened; returns whether it opened. The
// argument is not used.
bool ConectarServidor(Context& ctx, const QString& ignorado = {});
// Opens the local report connection and then its report recordsets. Errors
// go to the caller.
void ConectarLocal(Context& ctx);
// Opens the betting-centre connection and rsCentrosHipicos. Errors go to the caller.
void ConectarHipicos(Context& ctx);

}  // namespace hipico
