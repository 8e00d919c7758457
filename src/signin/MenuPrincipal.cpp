#include "signin/MenuPrincipal.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Openers.h"
#include "core/Version.h"
#include "core/WindowRegistry.h"
#include "sales/TicketRules.h"
#include "schema/LocalSchema.h"
#include "signin/MenuEntradas.h"

#include <QDesktopServices>

namespace hipico {

namespace {

const QString kTituloMenu = QStringLiteral("MENU PRINCIPAL");
constexpr int kLargoMotivo = 255;  // bitacora.motivo

// A schema name from the deployment, as an identifier between backquotes.
std::string esquema(const QString& nombre) {
    QString n = nombre;
    return ("`" + n.replace('`', "``") + "`").toStdString();
}

}  // namespace

MenuPrincipal::MenuPrincipal(Context& ctx, const WindowRegistry& ventanas)
    : abrirDireccion([](const QUrl& url) { return QDesktopServices::openUrl(url); }), ctx_(ctx), ventanas_(ventanas) {}

QString MenuPrincipal::titulo(const Session& s) { return tituloMenuPrincipal(s); }

void MenuPrincipal::cargarAjustes() {
    Session& s = ctx_.session;
    try {
        AbrirConfiguracion(ctx_);
        const Recordset& configuracion = ctx_.rs("rsConfiguracion");
        if (!configuracion.empty()) cargarConfiguracion(s, configuracion.first());
        AbrirGrupos(ctx_);
        cargarParametrosGrupo(s, ctx_.rs("rsGrupos"));
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloMenu, e.text());
    }
}

MenuPrincipal::Carga MenuPrincipal::avisos() {
    const Session& s = ctx_.session;
    const bool leeAvisos = s.nivel == nivel::Socio || s.nivel == nivel::Administrador || s.nivel == nivel::Gerente;
    if (leeAvisos && !s.mensaje.trimmed().isEmpty()) ctx_.dialogs.refuse(kTituloMensajeAdmin, s.mensaje);

    if (s.version > kVersionNumero) {
        if (ctx_.dialogs.confirm(kTituloActualizacion, kNuevaVersion, false, Icon::Question)) {
            if (abrirDireccion) abrirDireccion(QUrl::fromUserInput(s.web));
            return Carga::Terminar;
        }
    }
    return Carga::Lista;
}

QStringList MenuPrincipal::panelesEstado() const {
    const Session& s = ctx_.session;
    QStringList paneles;
    if (!s.empresa.isEmpty()) paneles << s.empresa;
    paneles << "Usuario: " + s.usuario + " (" + s.nivel + ")";
    QString centro = "Grupo: " + s.grupo;
    if (!s.ch.isEmpty()) centro = "Centro: " + s.ch + "  " + centro;
    paneles << centro;
    if (!s.fecha.isEmpty()) paneles << "Fecha: " + fechaVista(s.fecha);
    if (!s.mora.trimmed().isEmpty()) paneles << "Mora: " + s.mora;
    paneles << kVersionEtiqueta;
    return paneles;
}

QStringList MenuPrincipal::lineasFondo() const {
    const Session& s = ctx_.session;
    QString quien = s.nombre.isEmpty() ? s.usuario : s.nombre;
    if (!s.ch.isEmpty()) quien += " - " + s.ch;
    return {s.empresa.isEmpty() ? QStringLiteral("CENTROS HÍPICOS") : s.empresa, quien};
}

bool MenuPrincipal::visible(const QString& entrada) const {
    const EntradaMenu* e = buscarEntrada(entrada);
    if (!e || !e->niveles.contains(ctx_.session.nivel)) return false;
    if (esFuncionPropia(entrada)) return true;
    if (entrada == QLatin1String("subasta_menu")) {
        for (const QString& tablero : tablerosSubasta())
            if (ventanas_.has(tablero)) return true;
        return false;
    }
    return ventanas_.has(entrada);
}

bool MenuPrincipal::habilitada(const QString& entrada) const {
    if (entrada == QLatin1String("tb_menu")) return ctx_.session.permitirTf == 1;
    if (entrada == QLatin1String("macuare_menu")) return ctx_.session.permitirMc == 1;
    return true;
}

bool MenuPrincipal::permitido(const QString& entrada) const {
    const EntradaMenu* e = buscarEntrada(entrada);
    if (!e || e->permitidos.isEmpty() || e->permitidos.contains(ctx_.session.nivel)) return true;
    ctx_.dialogs.refuse(kTituloSinAcceso, kSinAcceso);
    return false;
}

MenuPrincipal::Anulacion MenuPrincipal::AnularBoleto() {
    if (!permitido(QStringLiteral("anular_menu"))) return Anulacion::SinAcceso;
    const auto codigo = ctx_.dialogs.ask(kTituloCodigoBoleto, kIngreseCodigo);
    if (!codigo || codigo->trimmed().isEmpty()) return Anulacion::Cancelada;
    const auto motivo = ctx_.dialogs.ask(kTituloMotivo, kIngreseMotivo, kMotivoPorDefecto);
    if (!motivo || motivo->trimmed().isEmpty()) return Anulacion::Cancelada;

    const Session& s = ctx_.session;
    Anulacion resultado = Anulacion::Error;
    try {
        Db& db = ctx_.servidor();
        // The ticket stays locked from the lookup to the delete, so results
        // processing cannot mark it a winner in between.
        resultado = db.inTransaction([&] {
            const Recordset boleto = db.query("SELECT * FROM ma_principal Where nu_boleto=? AND grupo = ? FOR UPDATE",
                                              {codigo->trimmed(), s.grupo});
            if (boleto.empty()) return Anulacion::NoEncontrado;
            const Row& b = boleto.first();
            if (carreraProcesada(db, b.text("fecha"), b.integer("carrera"))) return Anulacion::CarreraProcesada;
            return anularBoletoGanador(db, b, motivo->trimmed().left(kLargoMotivo), s.usuario) ? Anulacion::Anulado
                                                                                               : Anulacion::NoEncontrado;
        });
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloAnular, kNoSePuedeAnular + "\n" + e.text());
        return Anulacion::Error;
    }
    switch (resultado) {
    case Anulacion::NoEncontrado: ctx_.dialogs.refuse(kTituloAnular, kNoSePuedeAnular); break;
    case Anulacion::CarreraProcesada: ctx_.dialogs.refuse(kTituloAnular, kCarreraProcesada); break;
    case Anulacion::Anulado: ctx_.dialogs.inform(kTituloAnular, kBoletoAnulado); break;
    default: break;
    }
    return resultado;
}

bool MenuPrincipal::BorrarBDLocal() {
    if (!ctx_.dialogs.confirm(kTituloConfirmar, kBorrarBDLocal, true)) return false;
    try {
        // A machine whose local schema was never created (or was lost) has no
        // local connection: the schema is dropped, if there, on the server.
        const std::string borrar = "drop schema if exists " + esquema(ctx_.config.localBase) + ";";
        if (ctx_.cnLocal) {
            ctx_.cnLocal->exec(borrar);
        } else {
            auto servidor = Db::open(cadenaLocalSinBase(ctx_.config));
            servidor->exec(borrar);
        }
        ctx_.cnLocal.reset();
        ctx_.dialogs.inform(kTituloAdminSistema, kBDLocalBorrada);
        CrearBDLocal(ctx_.config);
        ConectarLocal(ctx_);
        return true;
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloAdminSistema, e.text());
        return false;
    }
}

QString MenuPrincipal::tableroPara(int subastas, int rematetam) {
    switch (subastas) {
    case 2: return rematetam == 0 ? QStringLiteral("Form_Subasta_2T") : QStringLiteral("Form_Subasta_2T_800");
    case 3: return QStringLiteral("Form_Subasta_3T");
    case 4: return QStringLiteral("Form_Subasta_4T");
    case 5: return QStringLiteral("Form_Subasta_5T");
    case 10: return QStringLiteral("Form_SubastaINT_2T");
    default: return {};
    }
}

QString MenuPrincipal::ElegirSubasta() {
    Session& s = ctx_.session;
    try {
        const Recordset grupo = ctx_.servidor().query("select * from grupos where grupo=?", {s.grupo});
        if (grupo.empty()) return {};
        cargarParametrosGrupo(s, grupo);
        s.subastas = grupo.first().toInt("subastas");
        return tableroPara(s.subastas, grupo.first().toInt("rematetam"));
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloMenu, e.text());
        return {};
    }
}

bool MenuPrincipal::LlenarTFActual() {
    const Session& s = ctx_.session;
    try {
        Db& local = ctx_.local();
        const Recordset caballos = ctx_.servidor().query("SELECT *  FROM carreras  where fecha  = ? and carrera=?",
                                                         {s.fecha, s.ajuste("carrera")});
        const double valorTabla = s.ajuste("valortablafija");
        local.inTransaction([&] {
            local.exec("DELETE from rpt_caballos_tf");
            for (const Row& c : caballos)
                local.exec("INSERT INTO rpt_caballos_tf (carrera, numero, caballo, valor, valor_tabla, ch, fecha) "
                           "VALUES (?,?,?,?,?,?,?)",
                           {c.integer("carrera"), c.integer("nu_caballo"), c.text("caballo"), c.number("valor_tf"),
                            valorTabla, s.ch, s.fecha});
        });
        return true;
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloMenu, e.text());
        return false;
    }
}

bool MenuPrincipal::Salir() {
    if (!ctx_.dialogs.confirm(kTituloSalir, kSalir, false, Icon::Question)) return false;
    try {
        ctx_.servidor().exec("update usuarios set mac='' where usuario =? limit 1 ", {ctx_.session.usuario});
    } catch (const DbError& e) {
        ctx_.dialogs.warn(kTituloSalir, e.text());
    }
    return true;
}

}  // namespace hipico
