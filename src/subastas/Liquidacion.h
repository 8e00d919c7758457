#pragma once

#include "core/Recordset.h"
#include "subastas/DisenoSubasta.h"

#include <QString>
#include <QVector>

namespace hipico {

class Db;

// The group parameters an auction uses.
struct ParametrosSubasta {
    QString grupo;
    QString ch;
    int subastas = 0;
    int rematetam = 0;
    double porRemate = 0;      // the house percentage
    double porRematador = 0;   // the auctioneer's percentage of the day's profit
    double tablazo = 0;        // fixed deduction of each race in the day's figures
    double tablaz[5] = {};     // tablaz1..tablaz4: fixed deduction of tables 1 to 4 on the board
    int redondear = 0;         // 1: the board rounds each table's commission
    double minimoRemate = 0;
    double doblaje = 0;
    // The fixed deduction of a table on the board (table 5 has none).
    double tablazDe(int tabla) const { return tabla >= 1 && tabla <= 4 ? tablaz[tabla] : 0; }
    // The board the group uses (nullptr when it runs no auctions).
    const DisenoSubasta* diseno() const { return disenoPara(subastas, rematetam); }

    static ParametrosSubasta de(const Row& grupo);
};
// The group's auction parameters (an empty set when the group has no row).
ParametrosSubasta leerParametros(Db& db, const QString& grupo);

// The rows of one race of a centre's day, in board order.
Recordset filasCarrera(Db& db, const QString& fecha, long long carrera, const QString& ch);
// The last race of a centre's day that has auction rows (0 when none).
long long ultimaCarrera(Db& db, const QString& fecha, const QString& ch);

// The horse that wins an auction: the race's winner (`win`), or its second
// place (`segundolugar`) when the winner's sale was invalidated on that
// auction. 0 while no winner is set.
int ganadorEfectivo(const Recordset& filas, const LadoSubasta& lado);

// One table of an auction: what was bid, the house commission and what its
// buyers play for.
struct TotalTabla {
    int tabla = 0;
    double total = 0;
    double comision = 0;
    double premio = 0;
};

// The board's totals of the shown auction (Calcular): each table over the
// board's 14 lines by itself; commission = amount x percentage / 100, its
// total rounded by RedondearEntero when the group's `redondear` is 1; prize =
// total - commission - the table's fixed deduction, never below 0.
struct TotalesSubasta {
    QVector<TotalTabla> tablas;
    double pote = 0;
    double casaJugado = 0;   // the house's purchases (buyer 999 / casa / CASA) and its house table
    double casaGanado = 0;   // its purchases of the winner
    bool desborde = false;   // a commission too large to round: shown unrounded
};
inline constexpr int kLineasTablero = 14;
TotalesSubasta calcularTotales(const Recordset& filas, const LadoSubasta& lado, const ParametrosSubasta& p,
                               double porcentaje);

// The settlement of one race of one auction, as its slip and the day's
// figures print it. Per row: sale += the tables' amounts; commission += each
// amount x the row's `porcentaje` / 100; house played += the house's purchases
// and its house table. Per race, with T the group's `tablazo`:
// prizes = sale - commission + pot - T; profit = commission - house played +
// house amount - pot.
struct LiquidacionCarrera {
    long long carrera = 0;
    double venta = 0;
    double porcentaje = 0;
    double comision = 0;
    double casaJugado = 0;
    double pote = 0;
    double tablazo = 0;
    double premios = 0;
    double montoCasa = 0;    // what the house receives when it bought the winner
    double ganancia = 0;
    int ganador = 0;         // `win`
    int segundo = 0;         // `segundolugar`
    int caballoCasa = 0;     // the winner, when the house bought it on some table
    QVector<TotalTabla> tablas;  // per table: total, commission, total - commission
};
LiquidacionCarrera liquidarCarrera(const Recordset& filas, const LadoSubasta& lado, double tablazo);

// The day of one auction of a centre: every race from 1 to the last one
// with rows, and the day's totals.
struct LiquidacionDia {
    QString fecha;
    QString ch;
    QVector<LiquidacionCarrera> carreras;
    double venta = 0;
    double casaJugado = 0;
    double casaGanado = 0;   // the races' house amounts
    double ganancia = 0;
    double tablazo = 0;      // T once per race
    double porRematador = 0; // profit x por_rematador / 100
};
LiquidacionDia liquidarDia(Db& db, const QString& fecha, const QString& ch, const LadoSubasta& lado,
                           const ParametrosSubasta& p);

// The auction parameters of a centre: those of its first group that runs
// auctions (the two-table board when none does).
ParametrosSubasta parametrosDelCentro(Db& db, const QString& ch);
// The house amounts of a race of the group's centre, each auction of its
// board computed from the rows and stored (monto_casa, monto_casa2).
void guardarMontosCasa(Db& db, const QString& fecha, long long carrera, const ParametrosSubasta& p);

// The auction result of a group's day: the day's profit of every auction of
// its board over its centre's rows. 0 for a group that runs no auctions. The
// day's close, the auction report by dates and the general report take it
// from here.
double resultadoSubasta(Db& db, const QString& fecha, const ParametrosSubasta& grupo);
// The close of a day: every group's `remate` of that day's winner totals.
void escribirRemateDelDia(Db& db, const QString& fecha);

}  // namespace hipico
