#include "subastas/RptSubastaFechas.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "sales/ImpresoraTaquilla.h"
#include "subastas/Liquidacion.h"


namespace hipico {

namespace {

const QString kTitulo = QStringLiteral("REPORTE DE SUBASTAS");
const QString kTodos = QStringLiteral("TODOS");

// A game's business of a group's working day: sold, paid, still due.
struct Negocio {
    double venta = 0, premios = 0, porPagar = 0;
};
Negocio negocioDelDia(Db& db, const std::string& tabla, const std::string& venta, const QString& fecha,
                      const QString& grupo) {
    const Row r = db.query("SELECT COALESCE(" + venta +
                               ", 0) AS venta, "
                               "COALESCE(SUM(CASE WHEN estatus = 2 OR estatus = 3 THEN cobrado END), 0) AS premios, "
                               "COALESCE(SUM(CASE WHEN estatus = 1 OR estatus = 4 THEN cobrado END), 0) AS porpagar "
                               "FROM " + tabla + " WHERE fecha = ? AND grupo = ?",
                           {fecha, grupo})
                      .first();
    return {r.number("venta"), r.number("premios"), r.number("porpagar")};
}

}  // namespace

bool RptSubastaFechas::eligeCualquierGrupo() const {
    const QString& n = ctx_.session.nivel;
    return esAdministrador(n) || n == nivel::Supervisor;
}

QStringList RptSubastaFechas::grupos() {
    if (!eligeCualquierGrupo()) return {ctx_.session.grupo};
    QStringList out{kTodos};
    for (const Row& r : ctx_.servidor().query("select grupo from grupos order by grupo")) out << r.text("grupo");
    return out;
}

QStringList RptSubastaFechas::subgrupos() {
    if (!eligeCualquierGrupo()) return {};
    QStringList out{QString()};
    for (const Row& r : ctx_.servidor().query("select nombre from subgrupos order by nombre")) out << r.text("nombre");
    return out;
}

std::optional<QVector<RptSubastaFechas::Fila>> RptSubastaFechas::Procesar(const QDate& desde, const QDate& hasta,
                                                                         const QString& grupo,
                                                                         const QString& subgrupo) {
    if (!desde.isValid() || !hasta.isValid() || desde > hasta) {
        ctx_.dialogs.refuse(kTitulo, QStringLiteral("LA FECHA INICIAL NO PUEDE SER POSTERIOR A LA FINAL"));
        return std::nullopt;
    }
    const bool porSubgrupo = !subgrupo.isEmpty();
    if (porSubgrupo ? !subgrupos().contains(subgrupo) : !grupos().contains(grupo)) {
        ctx_.dialogs.refuse(kTitulo, texto::DebeSeleccionarGrupo);
        return std::nullopt;
    }
    Db& db = ctx_.servidor();
    Db& local = ctx_.local();
    const QString inicio = fechaSql(desde), fin = fechaSql(hasta);
    const QDate trabajo = desdeFechaSql(Row::toText(db.scalar("SELECT fecha FROM configuracion")));
    const double valorGanador = Row::toNumber(db.scalar("SELECT valor_ganador FROM configuracion"));

    const Recordset alcance =
        porSubgrupo ? db.query("select g.* from grupos g, subgrupos s where g.subgrupo=s.subgrupo and s.nombre=? "
                               "order by g.grupo",
                               {subgrupo})
        : grupo == kTodos ? db.query("select * from grupos order by grupo")
                          : db.query("select * from grupos where grupo=?", {grupo});

    QVector<Fila> filas;
    const auto agregar = [&](const QString& g, const QDate& dia, const Negocio& n, double tablaFija, double remate) {
        Fila f;
        f.grupo = g;
        f.fecha = fechaVista(dia);
        f.venta = n.venta;
        f.premios = n.premios;
        f.porPagar = n.porPagar;
        f.saldo = n.venta - n.premios - n.porPagar;
        f.ganadores = f.saldo;
        f.tablaFija = tablaFija;
        f.remate = remate;
        filas.push_back(f);
    };

    // Closed days: the groups' daily totals.
    const QString finCerrado = fechaSql(std::min(hasta, trabajo.addDays(-1)));
    if (desde < trabajo) {
        const Recordset dias =
            porSubgrupo
                ? db.query("Select v.grupo,v.fecha,v.venta,v.premios,v.saldo,v.monto_porpagar,remate FROM "
                           "ventas_ganadores_general v,subgrupos s,grupos g where   v.grupo=g.grupo and "
                           "g.subgrupo=s.subgrupo  and s.nombre=? and v.fecha between ? and ? order by v.grupo,v.fecha;",
                           {subgrupo, inicio, finCerrado})
            : grupo == kTodos ? db.query("select * FROM ventas_ganadores_general where fecha between ? and ?  "
                                         "order by grupo,fecha",
                                         {inicio, finCerrado})
                              : db.query("select * FROM ventas_ganadores_general where fecha between ? and ?  and "
                                         "grupo = ? order by grupo,fecha",
                                         {inicio, finCerrado, grupo});
        for (const Row& v : dias) {
            const double tablaFija = Row::toNumber(db.scalar(
                "SELECT venta - premios - monto_porpagar FROM ventas_tf_general WHERE grupo = ? AND fecha = ?",
                {v.text("grupo"), v.text("fecha")}));
            agregar(v.text("grupo"), desdeFechaSql(v.text("fecha")),
                    {v.number("venta"), v.number("premios"), v.number("monto_porpagar")}, tablaFija,
                    v.number("remate"));
        }
    }
    // The working day, live.
    if (desde <= trabajo && trabajo <= hasta) {
        const QString dia = fechaSql(trabajo);
        for (const Row& g : alcance) {
            Negocio ganadores = negocioDelDia(db, "ma_principal", "SUM(ganadores)", dia, g.text("grupo"));
            ganadores.venta *= valorGanador;
            const Negocio tf = negocioDelDia(db, "tablafija", "SUM(monto)", dia, g.text("grupo"));
            agregar(g.text("grupo"), trabajo, ganadores, tf.venta - tf.premios - tf.porPagar,
                    resultadoSubasta(db, dia, ParametrosSubasta::de(g)));
        }
    }

    const QString inicioVista = fechaVista(desde), finVista = fechaVista(hasta);
    local.inTransaction([&] {
        local.exec("DELETE from rpt_general");
        for (const Fila& f : filas)
            local.exec("INSERT INTO rpt_general (fecha, ganadores, tablafija, remate, fecha_inicio, fecha_final, ch) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?)",
                       {fechaSql(QDate::fromString(f.fecha, QStringLiteral("dd-MM-yyyy"))), f.ganadores, f.tablaFija,
                        f.remate, inicioVista, finVista, f.grupo});
    });
    if (filas.isEmpty()) {
        ctx_.dialogs.inform(texto::TituloBusqueda, texto::SinRegistros);
        return std::nullopt;
    }
    return filas;
}

}  // namespace hipico

namespace hipico {

Impreso RptSubastaFechas::impreso(const QVector<Fila>& filas, const QDate& desde, const QDate& hasta) const {
    Impreso out;
    out.lineas << kTituloReporte << QStringLiteral("DESDE: ") + fechaVista(desde) + QStringLiteral("  HASTA: ") +
                                        fechaVista(hasta);
    out.lineas << QStringLiteral("GRUPO FECHA        GANADORES      REMATE");
    double ganadores = 0, remate = 0;
    for (const Fila& f : filas) {
        out.lineas << QStringLiteral("%1 %2 %3 %4")
                          .arg(f.grupo.left(5), -5)
                          .arg(f.fecha)
                          .arg(formatoDolar(f.ganadores), 13)
                          .arg(formatoDolar(f.remate), 11);
        ganadores += f.ganadores;
        remate += f.remate;
    }
    out.lineas << QStringLiteral("------------------------------");
    out.lineas << QStringLiteral("Total Ganadores: ") + formatoDolar(ganadores);
    out.lineas << QStringLiteral("Total Remate: ") + formatoDolar(remate);
    return out;
}

bool RptSubastaFechas::Imprimir(const QVector<Fila>& filas, const QDate& desde, const QDate& hasta) {
    return ImpresoraTaquilla(ctx_).imprimir(impreso(filas, desde, hasta));
}

}  // namespace hipico
