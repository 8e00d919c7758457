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

}  // namespace hipico
