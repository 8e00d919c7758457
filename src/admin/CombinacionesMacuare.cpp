#include "admin/CombinacionesMacuare.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Openers.h"
#include "reportes/Llenados.h"

namespace hipico {

QVector<CombinacionVendida> combinacionesDelDia(Context& ctx, const QString& fecha) {
    QVector<CombinacionVendida> v;
    for (const Row& r : ctx.servidor().query(
             "SELECT c.combinacion, c.estatus, c.monto, (SELECT count(*) FROM macuares m WHERE m.combinacion = "
             "c.combinacion and m.fecha = c.fecha) AS boletos FROM combinaciones_general c WHERE c.fecha = ? ORDER BY "
             "c.monto DESC, c.combinacion",
             {fecha}))
        v.push_back({r.text("combinacion"), r.integer("boletos"), r.number("monto"),
                     static_cast<int>(r.integer("estatus"))});
    return v;
}

long long llenarRptMacuare(Context& ctx, const QString& fecha) {
    const Recordset filas = ctx.servidor().query(
        "SELECT numero, boleto, v1, v2, v3, v4, v5, v6, v7, monto, DATE_FORMAT(fecha, '%d-%m-%Y') AS fecha, taquilla, "
        "grupo, estatus, veces, nombre, taquilla AS ch FROM macuares WHERE fecha = ? ORDER BY combinacion, numero",
        {fecha});
    const long long n = reescribir(ctx.local(), "rpt_macuare", filas);
    AbrirRptMacuare(ctx);
    return n;
}

long long llenarRptDiarioMC(Context& ctx, const QString& fecha) {
    const Recordset filas = ctx.servidor().query(
        "SELECT m.grupo AS ch, sum(m.monto * m.veces) AS venta, m.fecha, MAX(g.ch) AS chipico, "
        "DATE_FORMAT(m.fecha, '%d-%m-%Y') AS fecha_inicio, DATE_FORMAT(m.fecha, '%d-%m-%Y') AS fecha_final, "
        "sum(m.estatus = 1 or m.estatus = 2) AS cant_ganadores, sum(IF(m.estatus = 1 or m.estatus = 2, m.cobrado, 0)) "
        "AS total_premios, sum(IF(m.estatus = 2, m.cobrado, 0)) AS premios_cobrados, sum(m.monto * m.veces) - "
        "sum(IF(m.estatus = 1 or m.estatus = 2, m.cobrado, 0)) AS saldo FROM macuares m LEFT JOIN grupos g ON "
        "g.grupo = m.grupo WHERE m.fecha = ? GROUP BY m.grupo, m.fecha ORDER BY chipico, m.grupo",
        {fecha});
    return reescribir(ctx.local(), "rpt_diario_mc", filas);
}

}  // namespace hipico
