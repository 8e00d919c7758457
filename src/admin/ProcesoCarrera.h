#pragma once

#include "admin/ReglaDividendo.h"

#include <QString>
#include <QVector>

namespace hipico {

class Db;

// A winner of the race with its official dividend (two in a dead heat).
struct GanadorOficial {
    long long caballo = 0;
    double dividendo = 0;
};

// What processing a race needs once the administrator's input is checked.
struct PeticionProceso {
    QString fecha;                    // "YYYY-MM-DD"
    long long carrera = 0;
    long long idHipodromo = 0;
    QString centro;                   // a centre, or "TODOS"/"Todos"/"todos"/"" for every group
    QVector<GanadorOficial> ganadores;  // one, or two in a dead heat
    bool pagarOficial = false;        // the window's switch
    bool porHipodromo = false;        // per-track option: the rule comes from `dividendos`
};

// How one group was settled for one winner.
struct LiquidacionGrupo {
    QString grupo;
    QString ch;
    long long caballo = 0;
    DividendoGrupo::Tipo tipo = DividendoGrupo::Tipo::SinBanda;
    double dividendo = 0;             // X
    long long boletos = 0;            // tickets settled (or returned)
};

struct ResultadoProceso {
    int corredores = 0;               // runners counted
    QVector<LiquidacionGrupo> grupos;
    bool condicionadosConsumidos = false;
};

// Whether a centre text means every group.
bool esTodos(const QString& centro);

// Processes a race in one transaction: resets the race's unsettled tickets and
// lay-offs, writes the result into `carreras`, and settles every group of the
// centre (or all) by its own rule. Tickets already paid (2, 3) and refunds due
// (4) are never touched. A failure leaves everything as it was (the DbError
// goes to the caller).
ResultadoProceso procesarCarrera(Db& db, const PeticionProceso& p);

// The refund of a group, a race or a horse: every open ticket becomes a
// refund due of its units times the unit price. Empty grupo (or "TODOS") and
// caballo 0 widen the statement. Returns the tickets changed.
long long devolverBoletos(Db& db, const QString& fecha, long long carrera, const QString& grupo, long long caballo,
                          double valorGanador);

}  // namespace hipico
