#pragma once

#include "sales/Juego.h"

#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace hipico {

class Context;
class Db;
class ImpresoraTaquilla;

// The three flows every ticket game runs: the sale, the payment and the
// void. A game takes part through its description (Juego) and, for the
// sale, its Jugada; nothing of a flow is written twice.

// ---------------------------------------------------------------- sale

// A refusal of the sale; `autorizable`: the supervisor's password may finish it.
struct Rechazo : Aviso {
    bool autorizable = false;
};

// One sale of a game in progress, from the typed text to the printed ticket.
// The sale flow calls it in this order: preparar, then in one transaction
// bloquear, each check until one refuses, the insert of fila(), completar
// with the ticket's number and code; then the ticket is printed.
class Jugada {
public:
    virtual ~Jugada() = default;
    using Chequeo = std::function<std::optional<Rechazo>()>;

    // What the locks need, read before the transaction.
    virtual void preparar(Db& db) = 0;
    // Locks the rows the sale depends on, always in the same order. Called
    // again when the transaction is retried: what an attempt read goes.
    virtual void bloquear(Db& db) = 0;
    // The game's checks, in their order.
    virtual std::vector<Chequeo> chequeos() = 0;
    // The ticket's row.
    virtual Insercion fila() const = 0;
    // The code's prefix (the code is prefix, sale month "MM", day "DD" and the number).
    virtual QString prefijo() const = 0;
    virtual QString fecha() const = 0;
    // Writes the code and what goes with it (keys, a client's debit).
    virtual void completar(Db& db, long long numero, const QString& codigo) = 0;
    // The printed ticket.
    virtual Impreso ticket(long long numero, const QString& codigo, bool grafico) const = 0;
};

struct Venta {
    std::optional<Rechazo> rechazo;  // shown to the user already
    long long numero = 0;
    QString codigo;
    bool vendida() const { return !rechazo && numero > 0; }
};

// Runs the sale. A refusal is shown (after the transaction) and returned; a
// sold ticket is printed. A database failure goes to the caller.
Venta vender(Context& ctx, Jugada& jugada, ImpresoraTaquilla& impresora);

// ---------------------------------------------------------------- payment

// A ticket the payment lookup accepted.
struct ConsultaCobro {
    bool pagable = false;
    QString codigo;
    QString mensaje;  // the game's text for its status ("CABALLO GANADOR")
    double monto = 0;
    int estatus = -1;
    long long numero = 0;
};

// The lookup by code: the ticket and its kept copy, the tamper checks, then
// the outcome for this booth. Refusals are shown; nullopt when refused.
std::optional<ConsultaCobro> consultarCobro(Context& ctx, const Juego& juego, const QString& codigo);
// Pays the accepted ticket exactly once (a due status becomes its paid one,
// in the ticket, its kept copy and the group's day row), with the ticket's
// row locked and checked again; prints the slip when the group asks for it.
// Refusals are shown; the amount paid, or nullopt.
std::optional<double> cobrar(Context& ctx, const Juego& juego, const ConsultaCobro& consulta,
                             ImpresoraTaquilla& impresora);

// ---------------------------------------------------------------- void

// The ticket's row, locked (inside a transaction): how every flow takes a ticket.
std::optional<Row> bloquearBoleto(Db& db, const Juego& juego, long long numero);

// The rules a place checks on the locked ticket before it voids it.
struct ReglasAnulacion {
    QString codigo;                  // found by code: the row must still carry it
    const char* ambito = nullptr;    // the row must hold `valorAmbito` in this column
    QString valorAmbito;
    QString noAntesDe;               // "YYYY-MM-DD": an older ticket stays ("" no rule)
    bool soloVendidos = false;       // only a ticket not yet a winner or a refund
    bool nuncaLiquidados = false;    // a paid ticket stays
    bool forzado = false;            // the administrator's code: the game's closed rule does not hold
};
enum class ResultadoAnulacion { Cancelada, NoEncontrado, NoAnulable, Cerrado, Anulado, Error };

// The void itself, in one transaction with the ticket's row locked: the
// audit row (status 5) and the delete of the ticket. Nothing is written
// unless it gives Anulado.
ResultadoAnulacion anular(Db& db, const Juego& juego, long long numero, const ReglasAnulacion& reglas,
                          const QString& motivo, const QString& usuario);

// How a place of the program voids a ticket: what it asks, where it looks
// the ticket up, its rules and its texts.
struct PuntoAnulacion {
    QString ventana;                 // for the error log
    QString titulo;                  // title of the outcome messages
    bool pideCodigo = true;          // asks the code (else the caller gives the number)
    QString tituloMotivo;            // title of the reason box
    bool avisaSinMotivo = false;     // an empty reason is refused with a message (else dropped)
    const char* ambito = nullptr;    // the column the ticket shares with the session's value
    QString valorAmbito;
    QString noEncontrado;            // text for a ticket not found
    bool soloDelDia = false;         // a ticket of an earlier day stays
    bool soloVendidos = false;
    bool nuncaLiquidados = false;
    QStringList codigosAdmin;        // reasons that void a ticket of a closed race ...
    QString motivoAdmin;             // ... recorded as this reason
    // Asked once the ticket is found (unset: nothing asked); false stops.
    std::function<bool(Db& db, const Row& boleto)> confirmar;
};

// Asks, looks the ticket up, voids it and tells the user; a database failure
// goes through the error guard (Error).
ResultadoAnulacion anularBoleto(Context& ctx, const Juego& juego, const PuntoAnulacion& punto,
                                long long numero = 0);

// The reason of a void as the audit log keeps it (bitacora.motivo).
constexpr int kLargoMotivo = 255;

}  // namespace hipico
