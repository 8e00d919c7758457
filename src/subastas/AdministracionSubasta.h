#pragma once

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
// amounts computed from its rows, in one transaction. One entry per centre
// that auctioned the race (none when no centre did).
QVector<GanadorSubasta> fijarGanador(Db& db, const QString& fecha, long long carrera, const QString& centro,
                                     int caballo, bool segundoLugar);

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

// The auction board cells of the winners desk and of the manager's window:
// a race of a centre as rows, each edited cell written alone, the winner
// change when the auction's winner differs from the official one, and the
// group's auction percentages.
class CeldasSubasta {
public:
    explicit CeldasSubasta(Context& ctx) : ctx_(ctx) {}

    // The cells a user edits, in the grid's order after the horse.
    static const QStringList& columnas();
    Recordset cargar(const QString& fecha, long long carrera, const QString& ch);
    // Writes one cell (a pot cell: the race's pot). Bad input is refused.
    bool escribir(const QString& fecha, long long carrera, const QString& ch, long long idCarrera,
                  const QString& columna, const QString& texto);
    // "Para cuando el ganador del remate sea diferente al ganador oficial".
    bool cambiarGanador(const QString& fecha, long long carrera, const QString& centro, const QString& caballo);
    // The group's por_remate, por_rematador, subastas and tablaz1..tablaz4.
    QStringList porcentajes(const QString& grupo);

private:
    Context& ctx_;
};

inline const QString kTituloGanadorSubasta = QStringLiteral("Modificacion del Ganador");

}  // namespace hipico
