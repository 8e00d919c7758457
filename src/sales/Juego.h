#pragma once

#include "core/Dialogs.h"
#include "core/Recordset.h"
#include "sales/Tickets.h"
#include "schema/Escritores.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>
#include <optional>

namespace hipico {

class Context;
class Db;

// Ticket status (`estatus`): the same codes in a game's day table, its kept
// copy and its audit log. The SQL texts keep the numbers as the system
// writes them; the program speaks of the statuses by name.
enum class Estatus {
    Vendido = 0,           // sold, not (or not yet) a winner
    Ganador = 1,           // winner, payout `cobrado` due
    Pagado = 2,            // winner paid
    DevolucionPagada = 3,  // refund paid
    Devolucion = 4,        // refund due
    Anulado = 5,           // voided (only in the audit log)
};
inline int numeroDe(Estatus e) { return static_cast<int>(e); }
Estatus estatusDe(const Row& boleto);
// Settled: paid as a winner or as a refund (2, 3).
bool liquidado(Estatus e);

// The working day ("YYYY-MM-DD"): the settings' date, else the clock's.
QString fechaTrabajo(const Context& ctx);

// What a refused step leaves for the user, shown once the transaction has
// ended (never while rows are locked).
struct Aviso {
    Icon icono = Icon::Critical;
    QString titulo;
    QString texto;
};

// A status the booth pays: what it becomes, and what the lookup says.
struct Pagable {
    Estatus estatus;
    Estatus pagado;
    QString mensaje;          // "CABALLO GANADOR"
    bool soloDelDia = false;  // of an earlier day it is paid by the administration
};

// One ticket game, as the sale, payment and void flows need it: its tables
// and columns, the statuses it pays and their texts, and the hooks where the
// games differ. A game's sale is its own Jugada (Flujos.h).
// Each game fills it in field order: a new field goes at the end, and every
// game names its value there (a lambda can bind to a neighbouring hook of
// another type without a word from the compiler).
struct Juego {
    // Tables.
    const char* tabla;      // the day's tickets
    const char* copia;      // the group's kept copy
    const char* totales;    // the group's figures of a day
    // Columns.
    const char* codigo;     // the ticket code
    const char* taquilla;   // the selling centre
    // Payment.
    QString tituloCobro;
    QVector<Pagable> pagables;
    // The tamper checks of a ticket and its kept copy: the message of the
    // first alteration, "" for none. Unset: the game has no such check.
    std::function<QString(const Row& boleto, const std::optional<Row>& copia)> alteracion;
    // The payment slip.
    std::function<Impreso(const DatosCobro& cobro, bool grafico)> recibo;
    // The audit row of a ticket given a status (voided, or paid or refunded at the desk).
    std::function<Insercion(const Row& boleto, const QString& motivo, const QString& usuario, Estatus estatus)>
        anotacion;
    // A ticket that can no longer be voided (its race processed or closed), and what the user is told.
    std::function<bool(Db& db, const Row& boleto)> cerrado;
    QString textoCerrado;
    // A ticket whose race no longer sells (its pool closed), for the setting
    // that keeps a booth from voiding it.
    std::function<bool(Db& db, const Row& boleto)> ventaCerrada;
    // What else a void undoes, in its transaction once the ticket is gone (unset: nothing).
    std::function<void(Db& db, const Row& boleto)> alAnular;
    // What a refund of the ticket pays (the money it was sold for).
    std::function<double(Db& db, const Row& boleto)> devolucion;
    // What a ticket bought, as the desk's search lists it: its columns, the
    // units first (winner units, tables), then its money when the row keeps it.
    QStringList compra;

    const Pagable* pagable(Estatus e) const;
};

}  // namespace hipico
