#pragma once

#include "core/Diario.h"
#include "sales/Juego.h"

#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace hipico {

// The journal row of an operation that moves a ticket of the game, for
// `monto` (its stake read from the ticket).
AsientoDiario asiento(const QString& operacion, const Juego& juego, const Row& boleto, double monto);

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

    // The sale's token: chosen by the sale flow before anything is written
    // and stored with the ticket (unique), so that a sale whose connection
    // broke is found by it, or known absent, once the server answers.
    QString ficha;
    // The ticket's insert was sent and the connection broke before the
    // commit was confirmed: the server may have kept the sale or not.
    bool incierta = false;

    // What the locks need, read before the transaction.
    virtual void preparar(Db& db) = 0;
    // Locks the rows the sale depends on, always in the same order. Called
    // again when the transaction is retried: what an attempt read goes.
    virtual void bloquear(Db& db) = 0;
    // The game's checks, in their order.
    virtual std::vector<Chequeo> chequeos() = 0;
    // The ticket's row, carrying the sale's token.
    virtual Insercion fila(const QString& ficha) const = 0;
    // The code's prefix (the code is prefix, sale month "MM", day "DD" and the number).
    virtual QString prefijo() const = 0;
    virtual QString fecha() const = 0;
    // Writes the code and what goes with it (keys, a client's debit).
    virtual void completar(Db& db, long long numero, const QString& codigo) = 0;
    // The printed ticket.
    virtual Impreso ticket(long long numero, const QString& codigo, bool grafico) const = 0;
    // The ticket's money, for the money journal (0: the game does not say).
    virtual double dinero() const { return 0; }
};

// The write of a sold ticket's code (and keys) on its row, `asignaciones`
// over the ticket's table (alias m) for the row named by `donde`. On a
// cluster the same statement counts the ticket on the race-card row the sale
// locked (`contador` of carreras): a node's lock holds only on that node, and
// the close of the race writes that row too, so the two conflict at commit
// on any pair of nodes and the later one runs again. On a single server the
// lock alone orders a sale and the close, and the ticket's row is written
// alone (a statement over two tables costs the server a temporary table
// every time it runs).
class Sello {
public:
    Sello(const char* tabla, const char* asignaciones, const char* donde, const char* contador);
    // `valores` bind `asignaciones`, then `donde`; `fila` is the race-card row's key.
    long long escribir(Db& db, long long fila, const Params& valores) const;

private:
    std::string solo_;
    std::string contado_;
};

struct Venta {
    std::optional<Rechazo> rechazo;  // shown to the user already
    long long numero = 0;
    QString codigo;
    bool recuperada = false;  // found by its token after the connection broke
    bool vendida() const { return !rechazo && numero > 0; }
};

// Runs the sale. A refusal is shown (after the transaction) and returned; a
// sold ticket is printed. When the connection breaks once the ticket's insert
// was sent, the sale is looked up by its token (resolverVenta) and the user is
// told once what became of it. A database failure goes to the caller (the
// error log names `ventana`); when it leaves the sale's outcome unknown,
// jugada.incierta stays set and the caller settles it later with resolverVenta.
Venta vender(Context& ctx, const QString& ventana, const Juego& juego, Jugada& jugada,
             ImpresoraTaquilla& impresora);

// What became of a sale whose outcome was unknown: its token is looked up
// with a locking read, so a commit the server is still finishing is waited
// for. Stored: the ticket (its code and keys came in the same transaction)
// is printed and the user told so. Absent: nothing was sold; the returned
// refusal says so and is shown only when `avisarAusente`. A server still out
// of reach throws, and the sale stays unknown.
Venta resolverVenta(Context& ctx, const Juego& juego, Jugada& jugada, ImpresoraTaquilla& impresora,
                    bool avisarAusente);

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
// row locked and checked again (still the status and amount the lookup
// showed); prints the slip when the group asks for it. Refusals are shown;
// the amount paid, or nullopt. A commit cut off is settled by reading the
// ticket's status again, and the user is told whether it was paid.
std::optional<double> cobrar(Context& ctx, const QString& ventana, const Juego& juego, const ConsultaCobro& consulta,
                             ImpresoraTaquilla& impresora);

// A booth's payment in its two steps: the lookup keeps the accepted ticket,
// the payment pays it once and forgets it (paid or refused).
class CobroEnEspera {
public:
    ConsultaCobro buscar(Context& ctx, const Juego& juego, const QString& codigo) {
        consulta_ = consultarCobro(ctx, juego, codigo);
        return consulta_.value_or(ConsultaCobro{});
    }
    bool cobrar(Context& ctx, const QString& ventana, const Juego& juego, ImpresoraTaquilla& impresora) {
        if (!consulta_) return false;
        const ConsultaCobro pedido = *consulta_;
        consulta_.reset();
        return hipico::cobrar(ctx, ventana, juego, pedido, impresora).has_value();
    }
    const std::optional<ConsultaCobro>& consulta() const { return consulta_; }

private:
    std::optional<ConsultaCobro> consulta_;
};

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
    bool noSiVentaCerrada = false;   // a ticket whose race no longer sells stays
    // The place's scope (unset: none): a ticket outside it is not found.
    std::function<bool(Db& db, const Row& boleto)> dentro;
};
enum class ResultadoAnulacion { Cancelada, NoEncontrado, NoAnulable, Cerrado, VentaCerrada, Anulado, Error };

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
    QString textoCodigo;             // the code prompt ("" the shared one)
    QString tituloMotivo;            // title of the reason box
    bool pideMotivo = true;          // else the reason is the default one
    bool avisaSinMotivo = false;     // an empty reason is refused with a message (else dropped)
    const char* ambito = nullptr;    // the column the ticket shares with the session's value
    QString valorAmbito;
    QString noEncontrado;            // text for a ticket not found
    bool soloDelDia = false;         // a ticket of an earlier day stays
    bool soloVendidos = false;
    bool nuncaLiquidados = false;
    bool noSiVentaCerrada = false;   // a ticket whose race no longer sells stays
    QStringList codigosAdmin;        // reasons that void a ticket of a processed race here
    // The place's scope on the locked ticket (unset: none): outside it, not found.
    std::function<bool(Db& db, const Row& boleto)> dentro;
    // Asked once the ticket is found (unset: nothing asked); false stops.
    std::function<bool(Db& db, const Row& boleto)> confirmar;
};

// How a booth voids: a sold ticket of the day of its own centre, the reason
// required.
PuntoAnulacion puntoTaquilla(const QString& ventana, const QString& titulo, const QString& centro);

// Asks, looks the ticket up, voids it and tells the user; a database failure
// goes through the error guard (Error).
ResultadoAnulacion anularBoleto(Context& ctx, const Juego& juego, const PuntoAnulacion& punto,
                                long long numero = 0);

// The reason of a void as the audit log keeps it (bitacora.motivo): a longer
// one is refused.
constexpr int kLargoMotivo = 255;
// The administrator's codes of the places that void: whichever command is
// used, none of them is ever written into the audit log; the log says
// "ELIMINADO POR EL ADMIN" instead.
const QStringList& codigosAdministrador();
// Whether a reason fits the audit log; a longer one is refused (shown) and
// nothing is written.
bool motivoCabe(Context& ctx, const QString& motivo);

}  // namespace hipico
