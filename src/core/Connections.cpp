#include "core/Connections.h"

#include "core/Context.h"
#include "core/Openers.h"

namespace hipico {

QString cadenaServidor(const Config& c) { return cadenaCentral(c.servidor); }

QString cadenaCentral(const ServerConfig& s) {
    return "DRIVER={MariaDB ODBC 3.2 Driver};" + QStringLiteral("TCPIP=1;") + "SERVER=" + s.host + ";" + "UID=" +
           s.usuario + ";" + "PWD=" + s.clave + ";" + "DATABASE=" + s.base + ";" + "PORT=" +
           QString::number(s.puerto) + ";" + "CHARSET=utf8mb4;";
}

QStringList cadenasRespaldo(const ServerConfig& s) {
    QStringList out;
    for (const QString& r : s.respaldo) {
        ServerConfig otro = s;
        otro.host = r.section(':', 0, 0);
        otro.puerto = r.contains(':') ? r.section(':', 1).toInt() : s.puerto;
        out << cadenaCentral(otro);
    }
    return out;
}

QString cadenaLocal(const Config& c) {
    return "driver={MySQL ODBC 3.51 Driver};server=localhost;port=" + QString::number(c.localPuerto) +
           ";uid=root;pwd=" + c.localClave + ";database=" + c.localBase + ";connection=";
}

QString cadenaHipicos(const Config& c) {
    const ServerConfig& s = c.hipicos;
    return "driver={MySQL ODBC 3.51 Driver};server=" + s.host + ";port=" + QString::number(s.puerto) +
           " ;uid=" + s.usuario + ";pwd=" + s.clave + ";database=" + s.base + ";";
}

namespace {

// The creation texts name no port: the default one. Another local port is
// written in only when the deployment moved the local server.
QString puertoLocal(const Config& c) {
    return c.localPuerto == 3306 ? QString() : "port=" + QString::number(c.localPuerto) + ";";
}

}  // namespace

QString cadenaLocalSinBase(const Config& c) {
    return "driver={MySQL ODBC 3.51 Driver};server=localhost;" + puertoLocal(c) + "uid=root;pwd=" + c.localClave +
           ";connection=";
}

QString cadenaLocalConBase(const Config& c) {
    return "driver={MySQL ODBC 3.51 Driver};server=localhost;" + puertoLocal(c) + "uid=root;pwd=" + c.localClave +
           ";database=" + c.localBase + ";connection=";
}

bool ConectarServidor(Context& ctx, const QString&) {
    ctx.cnServidor.reset();
    try {
        ctx.cnServidor = Db::open(cadenaServidor(ctx.config), cadenasRespaldo(ctx.config.servidor));
        return true;
    } catch (const DbError&) {
        ctx.dialogs.refuse(kTituloConexion, kMensajeConexion);
        return false;
    }
}

void ConectarLocal(Context& ctx) {
    ctx.cnLocal = Db::open(cadenaLocal(ctx.config));
    AbrirRptDiario(ctx);
    AbrirRptDiarioRemate(ctx);
    AbrirRptDividendos(ctx);
    AbrirRptGeneral(ctx);
    AbrirRptDiarioMC(ctx);
    AbrirRptMacuare(ctx);
    AbrirRptResultadosTaqs(ctx);
    AbrirRptJugadoresRemate(ctx);
    AbrirRptCaballosTF(ctx);
}

void ConectarHipicos(Context& ctx) {
    ctx.cnHipicos = Db::open(cadenaHipicos(ctx.config));
    AbrirCentrosHipicos(ctx);
}

}  // namespace hipico
