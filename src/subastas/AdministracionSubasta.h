#pragma once

#include "admin/Escritorio.h"
#include "core/Recordset.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;

// The auction's winner of one centre's race, and what the house receives.
struct GanadorSubasta {
    QString ch;
    double montoCasa = 0;   // big board
    double montoCasa2 = 0;  // small board
};

// Writes the winner on every row of a race of a centre (of every centre with
// "TODOS"), with the second place when asked, and each centre's house
// amounts computed from its rows, in one transaction. Only centres of the
// scope are touched. One entry per centre that auctioned the race (none when
// no centre did).
QVector<GanadorSubasta> fijarGanador(Db& db, const QString& fecha, long long carrera, const QString& centro,
                                     int caballo, bool segundoLugar, const Alcance& alcance = {});

// The auction administration (Form_Admin_Remate): the winner of an
// auctioned race of the working day, for one centre or all.
class AdminRemate {
public:
    explicit AdminRemate(Context& ctx) : ctx_(ctx) {}

    // The working day "YYYY-MM-DD".
    QString fecha();
    // "TODOS" and every centre for the administrators and supervisors; the
    // session's own centre for the others.
    QStringList centros();
    // Checks the race, the horse and the centre, writes the winner and the
    // house amounts, and says so. nullopt when refused.
    std::optional<QVector<GanadorSubasta>> Procesar(const QString& carrera, const QString& caballo,
                                                   const QString& centro);

private:
    Context& ctx_;
};

// The auction board cells of the winners desk and of the managers' windows:
// the selected race of the selected centre as rows, each edited cell written
// alone, the winner change when the auction's winner differs from the
// official one, and the group's auction percentages. Each command takes the
// window's selection; every statement carries its scope (taken from the
// session when the window opened) as a bound value, so a centre or group
// outside it is neither read nor written, whatever the selection says.
class CeldasSubasta {
public:
    explicit CeldasSubasta(Context& ctx) : ctx_(ctx) {}

    // The cells a user edits, in the grid's order after the horse.
    static const QStringList& columnas();
    Recordset cargar(const Seleccion& s);
    // Writes one cell (a pot cell: the race's pot). Bad input, and a centre
    // outside the scope, are refused.
    bool escribir(const Seleccion& s, long long idCarrera, const QString& columna, const QString& texto);
    // "Para cuando el ganador del remate sea diferente al ganador oficial";
    // with "TODOS", every centre of the scope.
    bool cambiarGanador(const Seleccion& s, const QString& caballo);
    // The por_remate, por_rematador, subastas and tablaz1..tablaz4 of the
    // chosen group (of the user's own with "TODOS"), inside the scope.
    QStringList porcentajes(const Seleccion& s);

private:
    Context& ctx_;
};

inline const QString kTituloGanadorSubasta = QStringLiteral("Modificacion del Ganador");
inline const QString kElijaCentro = QStringLiteral("DEBE ELEGIR UN CENTRO DE LA LISTA");

}  // namespace hipico
