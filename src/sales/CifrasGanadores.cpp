#include "sales/CifrasGanadores.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/JuegoGanadores.h"

#include <tuple>

namespace hipico {

TotalesDia totalesGanadores(Context& ctx, long long desde, long long hasta) {
    Db& db = ctx.servidor();
    // A range of races adds one fixed term; the values stay bound.
    const std::string carreras = desde > 0 ? " and carrera between ? and ?" : "";
    Params p{fechaTrabajo(ctx), ctx.session.ch};
    if (desde > 0) p.insert(p.end(), {desde, hasta});
    // The booth's tickets of the day in the given statuses: their payouts and how many.
    auto cobros = [&](const char* estatus) {
        const Row r = db.query(std::string("SELECT sum(cobrado) as monto,count(cobrado)as cantidad FROM ma_principal "
                                           "where (") +
                                   estatus + ")  and fecha= ? and ch=?" + carreras,
                               p)
                          .first();
        return std::pair{r.number("monto"), r.integer("cantidad")};
    };
    TotalesDia t;
    t.anulados = Row::toInteger(db.scalar(
        "SELECT count(numero)as cant_anulados FROM bitacora where (estatus=5) and fecha= ? and taquilla=?" + carreras,
        p));
    std::tie(t.porCobrar, t.cantPorCobrar) = cobros("estatus=4 or estatus=1");
    std::tie(t.cobrado, t.cantCobrado) = cobros("estatus=2 or estatus=3");
    const Row sold = db.query(
                           "SELECT sum(ganadores) as venta,count(cobrado)as cant_venta FROM ma_principal where  fecha= ? "
                           "and ch=?" +
                               carreras,
                           p)
                         .first();
    t.unidadesVendidas = sold.number("venta");
    t.venta = t.unidadesVendidas * valorGanador(ctx.session);
    t.cantVenta = sold.integer("cant_venta");
    return t;
}

QVector<VentaCaballo> ventasPorCaballo(Context& ctx, long long carrera) {
    QVector<VentaCaballo> out;
    for (const Row& r : ctx.servidor().query("SELECT caballo,sum(ganadores) as venta FROM ma_principal where carrera "
                                            "=? and fecha  = ?  and ch=? group by caballo",
                                            {carrera, fechaTrabajo(ctx), ctx.session.ch}))
        out.append({r.integer("caballo"), r.number("venta")});
    return out;
}

QVector<CorredorCarrera> corredoresDe(Context& ctx, long long carrera) {
    QVector<CorredorCarrera> out;
    for (const Row& r : ctx.servidor().query(
             "SELECT id_carrera ,fecha,carrera,caballo,retirado,nu_caballo FROM carreras Where carrera = ? and fecha "
             "= ? and id_hipodromo =?   order by id_carrera ",
             {carrera, fechaTrabajo(ctx), carreraYPista(ctx).pista}))
        out.append({r.integer("nu_caballo"), r.text("caballo"), r.integer("retirado") != 0});
    return out;
}

QVector<CarreraDia> carrerasDelDia(Context& ctx) {
    QVector<CarreraDia> out;
    for (const Row& r : ctx.servidor().query(
             "Select distinct carrera,venta from carreras where fecha = ? and id_hipodromo  = ? order by carrera",
             {fechaTrabajo(ctx), carreraYPista(ctx).pista})) {
        if (!out.isEmpty() && out.back().carrera == r.integer("carrera")) {
            out.back().abierta = out.back().abierta || r.integer("venta") != 0;
            continue;
        }
        out.append({r.integer("carrera"), r.integer("venta") != 0});
    }
    return out;
}

std::optional<Impreso> resumenGanadores(Context& ctx, long long desde, long long hasta, bool grafico) {
    if (desde > hasta) std::swap(desde, hasta);
    const bool todas = desde <= 0;
    const QString fecha = fechaTrabajo(ctx);
    const Session& s = ctx.session;
    Db& db = ctx.servidor();
    const long long pista = carreraYPista(ctx).pista;
    QVector<long long> lista;
    if (todas) {
        for (const CarreraDia& c : carrerasDelDia(ctx)) lista << c.carrera;
    } else {
        for (long long c = desde; c <= hasta; ++c) lista << c;
    }
    const char* const resultado = "SELECT *  FROM carreras  where carrera =? and fecha  = ? and dividendo > 0  ";
    // With the confirmation rule on, the last race the summary covers must have its result.
    if (Row::toInteger(db.scalar("SELECT rpt_taquillaconfirmar FROM configuracion")) == 1) {
        const long long ultima =
            todas ? Row::toInteger(db.scalar("SELECT max(carrera) FROM ma_principal WHERE fecha = ? AND ch = ?",
                                             {fecha, s.ch}))
                  : hasta;
        if (ultima > 0 && db.query(resultado, {ultima, fecha}).empty()) {
            ctx.dialogs.refuse(texto::TituloImpresionResumen,
                               QStringLiteral("No se puede imprimir el resumen de ventas hasta que se confirme la carrera"));
            return std::nullopt;
        }
    }
    DatosResumen r;
    r.centro = s.ch;
    r.taquilla = s.usuario;
    r.fecha = fecha;
    r.hora = horaTexto(ctx.clock.now().time());
    r.carreras = todas ? QStringLiteral("TODAS") : QStringLiteral("DE LA %1 HASTA LA %2").arg(desde).arg(hasta);
    r.totales = totalesGanadores(ctx, todas ? 0 : desde, todas ? 0 : hasta);
    r.enDolares = s.enDolares();
    for (long long carrera : lista) {
        const Recordset rs = db.query(resultado, {carrera, fecha});
        if (rs.empty()) continue;
        Row fila = rs.first();
        for (const Row& x : rs)
            if (x.integer("id_hipodromo") == pista) {
                fila = x;
                break;
            }
        GanadorCarrera gan{carrera, fila.integer("win_ganadores"), fila.number("dividendo"),
                           fila.integer("win_ganadores2"), fila.number("dividendo2")};
        // The dividend the booth pays is its group's: read it off a winning ticket of the group.
        auto dividendoGrupo = [&](long long caballo, double oficial) {
            for (const Row& t : db.query("SELECT *  FROM ma_principal  where carrera =? and cobrado>0  and "
                                         "caballo=? and grupo=? and fecha = ? and (estatus=1 or estatus=2)",
                                         {carrera, caballo, s.grupo, fecha}))
                if (t.number("ganadores") > 0) return t.number("cobrado") / t.number("ganadores");
            return oficial;
        };
        gan.dividendo = dividendoGrupo(gan.caballo, gan.dividendo);
        if (gan.empate > 0) gan.dividendo2 = dividendoGrupo(gan.empate, gan.dividendo2);
        r.ganadores << gan;
    }
    return resumenVentas(r, grafico);
}

}  // namespace hipico
