#include "races/AbrirCerrarLogica.h"

#include "core/CierreCarreras.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Openers.h"
#include "core/Textos.h"
#include "races/Hipodromos.h"

namespace hipico {

namespace {

// "update carreras set estado_puestos=v" and the flag of each checked pool, in
// the order winner bets, auction, combination (only when asked for), fixed table.
struct Sentencia {
    std::string sql;
    Params params;
    void agregar(bool marcado, const char* columna, const SqlValue& valor) {
        if (!marcado) return;
        sql += columna;
        params.push_back(valor);
    }
};

// The race card's pool flags the boxes name ("estado_puestos=?,venta=?,...").
Sentencia asignarPozos(const Pozos& pozos, int valor, bool conMacuare) {
    Sentencia s{"estado_puestos=?", {valor}};
    s.agregar(pozos.ganadores, ",venta=?", valor);
    s.agregar(pozos.remate, ",venta_rm=?", valor);
    s.agregar(conMacuare && pozos.macuare, ",venta_mc=?", valor);
    s.agregar(pozos.tablaFija, ",venta_tf=?", valor);
    return s;
}

}  // namespace

QStringList AbrirCerrarLogica::hipodromos() { return nombresHipodromos(ctx_, true); }

QString AbrirCerrarLogica::leerFecha() {
    AbrirConfiguracion(ctx_);
    const Row& conf = ctx_.rs(QStringLiteral("rsConfiguracion")).first();
    fecha_ = conf.text(QStringLiteral("fecha"));
    carreraActual_ = conf.toInt(QStringLiteral("carrera"));
    return fecha_;
}

bool AbrirCerrarLogica::elegirHipodromo(const QString& nombre) {
    idHipodromo_ = idHipodromo(ctx_, nombre);
    leerFecha();
    return idHipodromo_.has_value();
}

QVector<Indicador> AbrirCerrarLogica::indicadores() {
    QVector<Indicador> filas;
    if (!idHipodromo_) return filas;
    const Recordset rs = ctx_.servidor().query(
        "select distinct carrera,venta,venta_tf,venta_rm,venta_mc from carreras where fecha = ? and id_hipodromo  = ? "
        "order by carrera",
        {fecha_, *idHipodromo_});
    filas.reserve(rs.size());
    for (const Row& r : rs)
        filas.push_back({r.toInt(QStringLiteral("carrera")), r.toInt(QStringLiteral("venta")),
                         r.toInt(QStringLiteral("venta_tf")), r.toInt(QStringLiteral("venta_rm")),
                         r.toInt(QStringLiteral("venta_mc"))});
    return filas;
}

bool AbrirCerrarLogica::botones(int carrera, const Pozos& pozos, int valor) {
    if (!idHipodromo_) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueNuevamente, texto::DebeSeleccionarHipodromo);
        return false;
    }
    const QString fecha = leerFecha();
    // The place-bet flag always follows the button; the combination pool is
    // not the buttons' business.
    const Sentencia flags = asignarPozos(pozos, valor, false);
    escribirCarreras(ctx_.servidor(), flags.sql, flags.params, "carrera = ? and fecha = ? and id_hipodromo = ? ",
                     {carrera, fecha, *idHipodromo_}, valor == 0);
    ctx_.dialogs.inform(texto::TituloAdministracionCarreras, texto::CambiosRealizados);
    return true;
}

bool AbrirCerrarLogica::carreraActual(int carrera, const Pozos& pozos, int valor) {
    const QString fecha = leerFecha();
    Db& db = ctx_.servidor();

    if (valor == 1) {
        // A race with a result on any track asks before it is sold again.
        bool procesada = false;
        for (const Row& r : db.query("SELECT *  FROM carreras  where carrera =? and fecha  = ?  ", {carrera, fecha}))
            procesada = procesada || r.number(QStringLiteral("dividendo")) > 0;
        if (procesada && !ctx_.dialogs.confirm(texto::TituloVerifiqueProceso, texto::CarreraYaProcesadaAbrir, true,
                                               Icon::Critical))
            return false;
    }

    Sentencia conf{"update configuracion set carrera=?,fecha=?", {carrera, fecha}};
    conf.agregar(pozos.ganadores, ",venta_ganadores=?", valor);
    conf.agregar(pozos.remate, ",venta_remate=?", valor);
    conf.agregar(pozos.macuare, ",venta_macuare=?", valor);
    conf.agregar(pozos.tablaFija, ",venta_tf=?", valor);
    conf.agregar(valor == 0, ",mensajetaq=?", "");
    // The settings and every track's race of that number and date together.
    const Sentencia flags = asignarPozos(pozos, valor, true);
    escribirCarreras(db, flags.sql, flags.params, "carrera = ? and fecha = ? ", {carrera, fecha}, valor == 0,
                     [&] { db.exec(conf.sql, conf.params); });
    carreraActual_ = carrera;

    ctx_.dialogs.inform(texto::TituloAdministracionCarreras, texto::CambiosRealizados);
    ctx_.ponerTituloMenu(tituloMenuPrincipal(
        ctx_.session, QStringLiteral("CARRERA ACTUAL: %1 %2").arg(carrera).arg(valor == 1 ? "ABIERTA" : "CERRADA")));
    return true;
}

QString AbrirCerrarLogica::tituloAlCerrar() const { return tituloMenuPrincipal(ctx_.session); }

}  // namespace hipico
