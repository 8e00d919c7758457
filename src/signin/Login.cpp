#include "signin/Login.h"

#include "core/Cipher.h"
#include "core/Connections.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Network.h"
#include "core/Niveles.h"
#include "core/Openers.h"
#include "core/RegistroErrores.h"
#include "core/Version.h"

#include <stdexcept>

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

    // The lookup ignores case; the sign-in does not. An empty password is
    // never a password, and the cipher's key is only a key.
    QString descifrada;
    try {
        descifrada = Desencriptar(s.clave, kClaveMaestra);
    } catch (const std::range_error&) {
        descifrada.clear();
    }
    if (clave.isEmpty() || descifrada != clave || s.usuario != usuario) {
        ctx_.dialogs.refuse(kTituloInicioSesion, kClaveNoValida);
        return Resultado::ClaveInvalida;
    }

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
