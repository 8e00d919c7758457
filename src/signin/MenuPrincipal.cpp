#include "signin/MenuPrincipal.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Openers.h"
#include "core/Version.h"
#include "core/WindowRegistry.h"
#include "core/Guardia.h"
#include "core/Textos.h"
#include "sales/JuegoGanadores.h"
#include "schema/LocalSchema.h"
#include "signin/MenuEntradas.h"
#include "subastas/DisenoSubasta.h"

#include <QDesktopServices>

namespace hipico {

namespace {

const QString kTituloMenu = QStringLiteral("MENU PRINCIPAL");
const QString kTituloAnular = QStringLiteral("ANULAR BOLETO");
const QString kTituloMotivo = QStringLiteral("MOTIVO");

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
    proteger(ctx_, kTituloMenu, [&] {
        AbrirConfiguracion(ctx_);
        const Recordset& configuracion = ctx_.rs("rsConfiguracion");
        if (!configuracion.empty()) cargarConfiguracion(s, configuracion.first());
        AbrirGrupos(ctx_);
        cargarParametrosGrupo(s, ctx_.rs("rsGrupos"));
    });
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
    if (!s.ipPublica.isEmpty()) paneles << "IP: " + s.ipPublica;
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
    ctx_.dialogs.refuse(kTituloSinAcceso, texto::SinAcceso);
    return false;
}

MenuPrincipal::Anulacion MenuPrincipal::AnularBoleto() {
    if (!permitido(QStringLiteral("anular_menu"))) return Anulacion::SinAcceso;
    // The menu looks the ticket up within the user's group.
    PuntoAnulacion p;
    p.ventana = kTituloMenu;
    p.titulo = kTituloAnular;
    p.tituloMotivo = kTituloMotivo;
    p.ambito = "grupo";
    p.valorAmbito = ctx_.session.grupo;
    p.noEncontrado = texto::BoletoNoAnulable;
    switch (anularBoleto(ctx_, juegoGanadores(), p)) {
    case ResultadoAnulacion::Cancelada: return Anulacion::Cancelada;
    case ResultadoAnulacion::NoEncontrado:
    case ResultadoAnulacion::NoAnulable: return Anulacion::NoEncontrado;
    case ResultadoAnulacion::Cerrado:
    case ResultadoAnulacion::VentaCerrada: return Anulacion::CarreraProcesada;
    case ResultadoAnulacion::Anulado: return Anulacion::Anulado;
    case ResultadoAnulacion::Error: break;
    }
    return Anulacion::Error;
}

bool MenuPrincipal::BorrarBDLocal() {
    if (!ctx_.dialogs.confirm(texto::TituloConfirmar, kBorrarBDLocal, true)) return false;
    return proteger(ctx_, kTituloMenu, [&] {
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
        ctx_.dialogs.inform(texto::TituloAdministracionSistema, kBDLocalBorrada);
        CrearBDLocal(ctx_.config);
        ConectarLocal(ctx_);
    });
}

QString MenuPrincipal::tableroPara(int subastas, int rematetam) {
    const DisenoSubasta* d = disenoPara(subastas, rematetam);
    return d ? d->nombre : QString();
}

QString MenuPrincipal::ElegirSubasta() {
    Session& s = ctx_.session;
    return intentar(ctx_, kTituloMenu, [&] {
               const Recordset grupo = ctx_.servidor().query("select * from grupos where grupo=?", {s.grupo});
               if (grupo.empty()) return QString();
               cargarParametrosGrupo(s, grupo);
               s.subastas = grupo.first().toInt("subastas");
               return tableroPara(s.subastas, grupo.first().toInt("rematetam"));
           })
        .value_or(QString());
}

bool MenuPrincipal::LlenarTFActual() {
    const Session& s = ctx_.session;
    return proteger(ctx_, kTituloMenu, [&] {
        Db& local = ctx_.local();
        // The current race on the current track: one row per horse.
        const Recordset caballos = ctx_.servidor().query(
            "SELECT *  FROM carreras  where fecha  = ? and carrera=? and id_hipodromo=? order by nu_caballo",
            {s.fecha, s.ajuste("carrera"), s.ajuste("id_hipodromo")});
        const double valorTabla = s.ajuste("valortablafija");
        local.inTransaction([&] {
            local.exec("DELETE from rpt_caballos_tf");
            for (const Row& c : caballos)
                local.exec("INSERT INTO rpt_caballos_tf (carrera, numero, caballo, valor, valor_tabla, ch, fecha) "
                           "VALUES (?,?,?,?,?,?,?)",
                           {c.integer("carrera"), c.integer("nu_caballo"), c.text("caballo"), c.number("valor_tf"),
                            valorTabla, s.ch, s.fecha});
        });
    });
}

bool MenuPrincipal::Salir() {
    // "No" is the default: an Enter typed ahead never ends the program.
    if (!ctx_.dialogs.confirm(kTituloSalir, kSalir, true, Icon::Question)) return false;
    // The program ends even when the machine binding could not be cleared (the guard tells why).
    proteger(ctx_, kTituloSalir,
             [&] { ctx_.servidor().exec("update usuarios set mac='' where usuario =? limit 1 ", {ctx_.session.usuario}); });
    return true;
}

}  // namespace hipico
