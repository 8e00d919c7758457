#pragma once

#include "sales/TicketPrinter.h"
#include "subastas/Liquidacion.h"

#include <QDateTime>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

namespace hipico {

class Db;

// The lines the auction boards print on the receipt printer, and the local
// report tables they fill for the report launcher. Amounts in "$#,##0.00".

// "CENTRO HIPICO ", "FECHA: ", "HORA: " under a title.
QStringList encabezadoSubasta(const QString& titulo, const QString& ch, const QDateTime& ahora);
// One race: "Carrera", "Venta: ", "Porcentaje: ", "Casa Jugado: ", "Casa Ganado: ",
// "Premios: ", "Tablazo: ", "Pote: ", "Cab Ganador: ", "Porcentaje de la Jugada: ",
// "Monto para la Casa: ", "Ganancia: ", with the board's per-table lines.
QStringList lineasCarrera(const LiquidacionCarrera& l, const DisenoSubasta& d);
// The day's totals: "Venta Final: ", "Casa Jugado Final: ", "Casa Ganado Final: ",
// "Ganancia Final: ", "Tablazo Final: ", "Por Rematador: ".
QStringList lineasDia(const LiquidacionDia& dia);
// Every race of the day, then its totals.
QStringList lineasFinal(const LiquidacionDia& dia, const DisenoSubasta& d);

// Who bought each race's winner on each table of an auction.
QStringList lineasGanadores(Db& db, const QString& fecha, const QString& ch, const DisenoSubasta& d);
// What each buyer played in the day on every table of the board (house
// codes and voided lines included as written; empty buyers left out).
QVector<QPair<QString, double>> jugadoPorComprador(Db& db, const QString& fecha, const QString& ch,
                                                   const DisenoSubasta& d);
QStringList lineasJugado(const QVector<QPair<QString, double>>& jugado);

// The local report tables of a centre's day: rpt_diarioremate (one row per
// horse line), rpt_diariorematefinal (one row per race, both auctions) and
// rpt_jugadores_remate (one row per buyer). Each is emptied first.
void llenarReportesSubasta(Db& central, Db& local, const QString& fecha, const QString& ch,
                           const ParametrosSubasta& p, const DisenoSubasta& d);

}  // namespace hipico
