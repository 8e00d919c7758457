#pragma once

#include "core/Recordset.h"
#include "reportes/Alcance.h"

#include <QDate>
#include <QString>
#include <functional>

namespace hipico {

class Context;

// What a report window asks for, once checked: the days (one day when both
// are the same), the race range (0 when the window asks none), the scope and
// the window's option.
struct Consulta {
    QString desde, hasta;  // "YYYY-MM-DD"
    long long carreraDesde = 0, carreraHasta = 0;
    Alcance alcance;
    bool opcion = false;
    bool unDia() const { return desde == hasta; }
};

// A game as the reports read it: its day table (the working day's tickets),
// its kept copies (earlier days), its daily totals, and how a ticket's sale
// is counted.
struct FuenteJuego {
    const char* dia;        // nullptr: the game has no ticket table here
    const char* copia;
    const char* totales;
    const char* juego;      // the `juego` of ventas_generales ("" for the tables of one game)
    const char* unidades;   // the column summed as the sale
    bool porUnidad;         // winner units: money = units x the group's unit price
    // The keys of the day table and of the kept copies when an index (ch,
    // fecha, key) finds a day's first and last key at once (nullptr: none).
    // A day's tickets were written one after the other, so its sums read the
    // table in key order between the two instead of looking each row up.
    const char* claveDia = nullptr;
    const char* claveCopia = nullptr;
};
const FuenteJuego& fuenteGanadores();
const FuenteJuego& fuenteTablaFija();
const FuenteJuego& fuenteMacuare();
const FuenteJuego& fuentePuestos();
const FuenteJuego& fuenteDinamicas();

// The fillers: each is one statement that the central server aggregates,
// whose columns are named as the columns of its local report table (the rows
// to write). A database failure goes to the caller.

// rpt_resultadoscarreras: played, paid, due and total per race of a day (per
// centre and race when the scope is a subgroup).
Recordset filasResultados(Context& ctx, const FuenteJuego& j, const Consulta& c);
// rpt_dividendos: the day's processed races with their winners and dividends.
Recordset filasDividendos(Context& ctx, const Consulta& c);
// rpt_diario: per group and day, sales, prizes, due, balance and the three
// shares; one day from the tickets, a range from the daily totals.
Recordset filasDiario(Context& ctx, const FuenteJuego& j, const Consulta& c);
// rpt_general: per centre and day, the net of every game, lay-offs and the
// auction income; over a date range from the daily totals, or over one
// day's race range from the tickets (porCarreras).
Recordset filasGeneral(Context& ctx, const Consulta& c, bool porCarreras);
// rpt_bitacora: the audit log's entries (winner or fixed-table log).
Recordset filasBitacora(Context& ctx, bool tablaFija, const Consulta& c);
// rpt_resultadostaqs: per booth and day, played, paid, due and total.
Recordset filasTaquillas(Context& ctx, const FuenteJuego& j, const Consulta& c);
// rpt_jugadas: a list of tickets as the desk found them (numero, nu_boleto,
// carrera, caballo, ganadores or tablas and monto, cobrado, estatus, ch,
// grupo), each with its money (winner units at the unit price) and its paid
// or due prize apart.
Recordset filasJugadas(const Recordset& boletos, const QString& fecha, double valorGanador);

// The auction income of a centre on a day (and a race range, 0 0 for the whole
// day) for the general report. Unset, the report takes the `remate` the daily
// totals carry (0 until the auction boards write it). The auction boards set
// it once when the program starts.
using IngresoRemate = std::function<double(Context& ctx, const QString& ch, const QString& fecha,
                                           long long carreraDesde, long long carreraHasta)>;
void ponerIngresoRemate(IngresoRemate ingreso);

// Empties a local report table and writes the rows, a few hundred per
// statement, in one transaction; every column of the rows names a column of
// the table, whose others keep their defaults. Texts are cut to their
// column's width and kept to its character set (latin1). Gives the rows written.
long long reescribir(Db& local, const char* tabla, const Recordset& filas);

}  // namespace hipico
