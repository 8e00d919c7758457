#pragma once

#include <QDate>
#include <QString>
#include <QVector>

namespace hipico {

class Db;

struct DemoUsuario {
    QString usuario;
    QString clave;
    QString nombre;
    QString nivel;
    QString grupo;
};

// The demo's users, one of every level, with their plain passwords.
const QVector<DemoUsuario>& usuariosDemo();

// Fills an empty central schema with a demo day: the settings row, two
// tracks with eight races each (one race left with four runners), two
// betting centres with two groups each, their rules and limits, users of
// every level, clients and the day's total rows.
void cargarDemo(Db& central, const QDate& hoy);
// The auction boards of the demo: one group in a centre of its own for each
// board beyond the two-table one of LOS PINOS, an auctioneer for each, and
// race 1 of LA RINCONADA auctioned with bids on every board (LOS PINOS
// included). Kept apart from the demo day so the day stays as the tests know it.
// The week before the demo day: daily totals of every group for the winner
// and fixed-table games, so the weekly reports show something. Kept apart
// from the demo day for the same reason.
void cargarDemoSemana(Db& central, const QDate& hoy);
// The demo's Macuare: the legs are races 1 to 7 of LA RINCONADA, open for
// sale, with the groups' Macuare limits, forty tickets of the day from the
// booths of LOS PINOS and MARACAY, and the winners of the first two legs.
void cargarDemoMacuare(Db& central, const QDate& hoy);
const QVector<DemoUsuario>& usuariosDemoSubastas();
void cargarDemoSubastas(Db& central, const QDate& hoy);
// A fixed-table day: table prices by horse on the first track, sales of
// group 08 on the open race 1 and on race 2, whose result (horse 3, the
// prize of one table) is processed, one winner already paid. Kept apart
// from the demo day for the same reason.
void cargarDemoTablaFija(Db& central, const QDate& hoy);
// The betting centres of the demo, and tomorrow's race card, on the
// betting-centre server.
void cargarDemoHipicos(Db& hipicos, const QDate& hoy);

}  // namespace hipico
