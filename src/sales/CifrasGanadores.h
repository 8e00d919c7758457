#pragma once

#include "sales/Tickets.h"

#include <QString>
#include <QVector>
#include <optional>

namespace hipico {

class Context;

// The booth's figures of the winner game for the working day: its totals
// (Totalizar_Dia, Cuadrar), the sales per horse, the race's runners, the
// day's races, and the printed summary. Database failures go to the caller.

// Races from..to; 0, 0 = every race.
TotalesDia totalesGanadores(Context& ctx, long long desde, long long hasta);

struct VentaCaballo {
    long long caballo = 0;
    double unidades = 0;
};
QVector<VentaCaballo> ventasPorCaballo(Context& ctx, long long carrera);

struct CorredorCarrera {
    long long numero = 0;
    QString nombre;
    bool retirado = false;
};
// The race's horses on the booth's track.
QVector<CorredorCarrera> corredoresDe(Context& ctx, long long carrera);

struct CarreraDia {
    long long carrera = 0;
    bool abierta = false;
};
// The day's races on the booth's track.
QVector<CarreraDia> carrerasDelDia(Context& ctx);

// The printed "RESUMEN DE VENTAS" of races from..to (0, 0 = every race).
// With the confirmation rule on, the last race it covers must have its
// result: otherwise the user is told and nothing is returned.
std::optional<Impreso> resumenGanadores(Context& ctx, long long desde, long long hasta, bool grafico);

}  // namespace hipico
