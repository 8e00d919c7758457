#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVector>

namespace hipico {

class Context;

// Logic of the booth summary window of winner bets (Form_RPT_CuadreTaqWIn):
// per booth of a date, what it sold, paid and still owes, written into the
// local report table rpt_resultadostaqs and shown in a grid.
class CuadreTaquillas {
public:
    explicit CuadreTaquillas(Context& ctx) : ctx_(ctx) {}

    // The choices of the group list for the user's level: "TODOS" and every
    // group for the administrator levels and "Socio"; "TODOS" and the groups
    // of the user's centre for "Supervisor" and "Gerente"; the user's own
    // group for everyone else. A database failure goes to the caller.
    QStringList grupos();

    struct Fila {
        QString taquilla;
        QString fecha;  // "DD-MM-YYYY"
        double jugado = 0;
        double cobrado = 0;
        double porPagar = 0;
        double total = 0;  // jugado - cobrado - porPagar
    };
    // Fills rpt_resultadostaqs (when the local schema can be reached) and
    // returns the rows. The working day is read from the day's tickets
    // (ma_principal), earlier days from the group copy (ventas_ganadores).
    // Nothing found: "No se encontro Ningun registro" (when avisar).
    QVector<Fila> buscar(const QDate& fecha, const QString& grupo, bool avisar = true);

private:
    Context& ctx_;
};

}  // namespace hipico
