#include "sales/CuadreCaja.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "sales/CifrasGanadores.h"
#include "sales/Juego.h"

namespace hipico {

namespace {

// The booth's figures of the day since the last cash-up, the day's figures
// now given.
TramoCaja tramo(Context& ctx, const TotalesDia& hoy) {
    TramoCaja t;
    t.boletos = hoy.cantVenta;
    t.venta = hoy.venta;
    t.pagado = hoy.cobrado;
    t.anulados = hoy.anulados;
    const Recordset ultimo = ctx.servidor().query(
        "SELECT hora, boletos, venta, pagado, anulados FROM cuadres_caja WHERE ch = ? AND fecha = ? "
        "ORDER BY id_cuadre DESC LIMIT 1",
        {ctx.session.ch, fechaTrabajo(ctx)});
    if (ultimo.empty()) return t;
    const Row& u = ultimo.first();
    t.desde = u.text("hora");
    t.boletos -= u.integer("boletos");
    t.venta -= u.number("venta");
    t.pagado -= u.number("pagado");
    t.anulados -= u.integer("anulados");
    return t;
}

}  // namespace

TramoCaja desdeUltimoCuadre(Context& ctx) { return tramo(ctx, totalesGanadores(ctx, 0, 0)); }

CuadreCaja registrarCuadre(Context& ctx, double contado) {
    const TotalesDia hoy = totalesGanadores(ctx, 0, 0);
    CuadreCaja c;
    c.tramo = tramo(ctx, hoy);
    c.hasta = horaTexto(ctx.clock.now().time());
    c.contado = contado;
    const Session& s = ctx.session;
    ctx.servidor().exec(
        "INSERT INTO cuadres_caja (fecha, hora, ch, grupo, usuario, boletos, venta, pagado, anulados, esperado, "
        "contado, diferencia) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {fechaTrabajo(ctx), c.hasta, s.ch, s.grupo, s.usuario, hoy.cantVenta, hoy.venta, hoy.cobrado, hoy.anulados,
         c.tramo.esperado(), contado, c.diferencia()});
    return c;
}

QStringList lineasCuadre(const CuadreCaja& c, const QString& taquilla, bool enDolares) {
    const TramoCaja& t = c.tramo;
    return {QStringLiteral("---------------------------------"),
            QStringLiteral("--- CUADRE DE CAJA ---"),
            QStringLiteral("TAQUILLA ") + taquilla,
            QStringLiteral("DESDE: ") + (t.desde.isEmpty() ? QStringLiteral("INICIO DEL DIA") : t.desde),
            QStringLiteral("HASTA: ") + c.hasta,
            QStringLiteral("BOLETOS VENDIDOS : ") + QString::number(t.boletos),
            QStringLiteral("BOLETOS ANULADOS : ") + QString::number(t.anulados),
            QStringLiteral("VENTA : ") + formatoMonto(t.venta, enDolares),
            QStringLiteral("PREMIOS PAGADOS : ") + formatoMonto(t.pagado, enDolares),
            QStringLiteral("ESPERADO EN CAJA : ") + formatoMonto(t.esperado(), enDolares),
            QStringLiteral("CONTADO EN CAJA : ") + formatoMonto(c.contado, enDolares),
            QStringLiteral("DIFERENCIA : ") + formatoMonto(c.diferencia(), enDolares)};
}

}  // namespace hipico
