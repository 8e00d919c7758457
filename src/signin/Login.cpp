#include "signin/Login.h"

#include "core/Claves.h"
#include "core/Connections.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Network.h"
#include "core/Niveles.h"
#include "core/Openers.h"
#include "core/RegistroErrores.h"
#include "core/Version.h"

#include <QDateTime>

namespace hipico {

namespace {
// The window whose procedure this is, as the error log names it.
const QString kVentana = QStringLiteral("frmLogin");
}  // namespace

Login::Login(Context& ctx) : mac(DireccionMac()), ctx_(ctx) {}

QString Login::textoRed(bool enLinea) {
    return enLinea ? QStringLiteral("Online") : QStringLiteral("No hay Internet");
}

void Login::registrarIp(const QString& ip) {
    ctx_.servidor().exec("update usuarios set ip_pc=? where usuario =? limit 1 ", {ip, ctx_.session.usuario});
}

Login::Resultado Login::IniciarSesion(const QString& usuario, const QString& clave) {
    return intentar(ctx_, kVentana, [&] { return iniciar(usuario, clave); }).value_or(Resultado::Error);
}

bool Login::usaReportes() const {
    using namespace nivel;
    static const QStringList conReportes = {Administrador, Socio,   AdministradorOculto, Supervisor,
                                            SupervisorTF,  AdminTF, Gerente,             Remate};
    const Session& s = ctx_.session;
    if (!conReportes.contains(s.nivel)) return false;
    return !(s.nivel == Remate && s.subastas == 2);
}

namespace {
const char* const kFormatoRetencion = "yyyy-MM-dd hh:mm:ss";
}  // namespace

int Login::minutosRetenida(Db& db, const QString& usuario) const {
    const Recordset rs = db.query("SELECT retenida_hasta FROM intentos_sesion WHERE usuario = ?", {usuario});
    if (rs.empty()) return 0;
    const QDateTime hasta = QDateTime::fromString(rs.first().text("retenida_hasta"), kFormatoRetencion);
    const qint64 segundos = hasta.isValid() ? ctx_.clock.now().secsTo(hasta) : 0;
    return segundos > 0 ? int((segundos + 59) / 60) : 0;
}

bool Login::contarFallo(Db& db, const QString& usuario) const {
    const Session& s = ctx_.session;
    const int maximo = static_cast<int>(s.ajuste("intentos_clave"));
    const int minutos = static_cast<int>(s.ajuste("minutos_bloqueo"));
    if (maximo <= 0 || minutos <= 0) return false;
    // Two machines failing at once count both failures: the user's row is locked.
    return db.inTransaction([&] {
        db.exec("INSERT INTO intentos_sesion (usuario, fallidos) VALUES (?, 0) "
                "ON DUPLICATE KEY UPDATE usuario = usuario",
                {usuario});
        const long long fallidos =
            Row::toInteger(db.scalar("SELECT fallidos FROM intentos_sesion WHERE usuario = ? FOR UPDATE", {usuario})) + 1;
        if (fallidos < maximo) {
            db.exec("UPDATE intentos_sesion SET fallidos = ? WHERE usuario = ?", {fallidos, usuario});
            return false;
        }
        const QString hasta = ctx_.clock.now().addSecs(qint64(minutos) * 60).toString(kFormatoRetencion);
        db.exec("UPDATE intentos_sesion SET fallidos = 0, retenida_hasta = ? WHERE usuario = ?", {hasta, usuario});
        return true;
    });
}

Login::Resultado Login::iniciar(const QString& usuario, const QString& clave) {
    // A fresh session for every attempt: nothing of a refused attempt stays.
    ctx_.session = Session();
    Session& s = ctx_.session;
    s.ipPublica = ipPublica;

    if (!ConectarServidor(ctx_)) return Resultado::SinConexion;
    // The user is read below with its own query: the whole users table is
    // not opened here.
    AbrirConfiguracion(ctx_);
    AbrirGrupos(ctx_);
    AbrirTipoClientes(ctx_);
    const Recordset& configuracion = ctx_.rs("rsConfiguracion");
    if (!configuracion.empty()) cargarConfiguracion(s, configuracion.first());

    Db& db = ctx_.servidor();
    const Recordset usuarios = db.query("select * from usuarios where usuario=? ", {usuario});
    if (usuarios.empty()) {
        ctx_.dialogs.refuse(kTituloInicioSesion, kUsuarioNoValido);
        return Resultado::UsuarioInvalido;
    }
    cargarIdentidad(s, usuarios.first());

    // An account held after too many failures is refused whatever is typed.
    if (const int minutos = minutosRetenida(db, s.usuario); minutos > 0) {
        ctx_.dialogs.refuse(kTituloInicioSesion, kCuentaEnEspera.arg(minutos));
        return Resultado::CuentaRetenida;
    }
    // The lookup ignores case; the sign-in does not. The stored password is
    // enciphered or hashed; an empty password is never a password.
    if (!claveCorrecta(s.clave, clave) || s.usuario != usuario) {
        if (contarFallo(db, s.usuario)) {
            ctx_.dialogs.refuse(kTituloInicioSesion, kCuentaRetenida.arg(s.ajuste("minutos_bloqueo")));
            return Resultado::CuentaRetenida;
        }
        ctx_.dialogs.refuse(kTituloInicioSesion, kClaveNoValida);
        return Resultado::ClaveInvalida;
    }
    db.exec("DELETE FROM intentos_sesion WHERE usuario = ?", {s.usuario});

    const Recordset grupo = db.query("select * from grupos where grupo=?  ", {s.grupo});
    if (!grupo.empty()) cargarGrupoUsuario(s, grupo.first());

    if (s.fechaIngreso == s.fecha && s.mac != mac && !s.mac.isEmpty() && s.nivel != nivel::AdministradorOculto &&
        s.bloqueo == 1) {
        ctx_.dialogs.refuse(kTituloSesionAbierta, kSesionAbierta);
        return Resultado::SesionEnOtraPc;
    }
    if (s.estatus == QLatin1String("Baja")) {
        ctx_.dialogs.refuse(kTituloCobranza, kCuentaSuspendida);
        return Resultado::CuentaSuspendida;
    }

    if (!esNivelDireccion(s.nivel)) {
        AbrirSubgrupos(ctx_);
        const Recordset& subgrupos = ctx_.rs("rsSubgrupos");
        const int i = subgrupos.find("subgrupo", s.subgrupo);
        if (i >= 0) cargarSubgrupo(s, subgrupos[i]);
    }

    if (usaReportes()) {
        try {
            ConectarLocal(ctx_);
        } catch (const DbError& e) {
            // The menu's local database entry creates it again; the sign-in goes on.
            ctx_.cnLocal.reset();
            registrarError(ctx_, kVentana, e);
            ctx_.dialogs.warn(kTituloBDLocal, kSinBDLocal);
        }
    }

    const QString hora = horaTexto(ctx_.clock.now().time());
    db.exec("update usuarios set fecha_ingreso=?,hora_ingreso=?,mac=?,ip_pc=?,version=? where usuario =? limit 1 ",
            {s.fecha, hora, mac, ipPublica, kVersionTexto, s.usuario});
    s.mac = mac;
    s.fechaIngreso = s.fecha;
    return Resultado::Aceptado;
}

}  // namespace hipico
