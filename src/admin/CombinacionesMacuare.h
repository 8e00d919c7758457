#pragma once

#include <QString>
#include <QVector>

namespace hipico {

class Context;

// The day's Macuare combinations (Form_combinaciones): every combination sold
// with its tickets and amount, and the report of the day's tickets by
// combination (rpt_macuare, report kind 13). Database failures go to the caller.

struct CombinacionVendida {
    QString combinacion;
    long long boletos = 0;
    double monto = 0;  // amount x veces of its tickets
    int estatus = 0;   // 0: sold once; 1: sold again
};
QVector<CombinacionVendida> combinacionesDelDia(Context& ctx, const QString& fecha);

// Fills rpt_macuare with the day's tickets, by combination, and leaves the
// program's rsCombinaciones on it (AbrirRptMacuare); gives the rows written.
long long llenarRptMacuare(Context& ctx, const QString& fecha);

// Fills rpt_diario_mc with the day's Macuare per group (sales, winning
// tickets, prizes, prizes paid, balance) for report kind 14; gives the rows written.
long long llenarRptDiarioMC(Context& ctx, const QString& fecha);

}  // namespace hipico
