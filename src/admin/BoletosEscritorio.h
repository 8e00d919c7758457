#pragma once

#include "admin/Escritorio.h"
#include "reportes/Reporte.h"
#include "sales/JuegoGanadores.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

// The desk's tickets tab: single tickets of a game (void by number or by
// code, pay, refund, renumber; the winner game's by default), the Macuare
// void, and the audit of the selected race and the ticket search, both on
// the game's tickets.
class BoletosEscritorio : public ComandoEscritorio {
public:
    explicit BoletosEscritorio(Context& ctx, const Juego& juego = juegoGanadores())
        : ComandoEscritorio(ctx), juego_(juego) {}

    // The void flow of the desk: a paid ticket stays, and a ticket of a
    // processed race goes only with the administrator's code. A ticket
    // outside the scope is not found.
    bool anularPorNumero(long long numero, const Alcance& alcance = {});
    bool anularPorCodigo();
    // The manager's void by code ("INGRESE EL CODIGO DEL BOLETO DE
    // GANADORES"): only a ticket of the scope, of a race still open and not
    // processed; the reason is asked only when the group says so.
    bool anularGerencia(const Alcance& alcance, bool pedirMotivo);
    // Pays a due ticket as of its sale date; refunds an unpaid one.
    bool pagar(long long numero);
    bool devolver(long long numero);
    bool renumerar(long long numero);
    bool anularMacuare(const Alcance& alcance = {});

    // Audit of the race's tickets of the game against their snapshot (the
    // game's rows of ventas_auditoria).
    struct Auditoria {
        long long enAuditoria = 0;  // snapshot rows of the race
        long long enVentas = 0;     // tickets of the race
        bool tomada = false;        // the snapshot was taken now
        Recordset alterados;        // snapshot rows with no identical ticket
    };
    std::optional<Auditoria> auditoria(const Seleccion& s);
    bool borrarAuditoria(const Seleccion& s);

    // Ticket search: what differs between the desk and the manager's
    // windows is this description.
    struct ConsultaBoletos {
        bool dolares = false;              // adds `dolares` (units times the unit price)
        bool rango = false;                // races from the selection's race to `hasta`
        QStringList clases;                // the status classes offered, in order
        QVector<int> estatusClase;         // the status of each class (-1: every status)
        QVector<int> pagados, porPagar;    // the statuses the two money sums take
    };
    static const ConsultaBoletos& consultaEscritorio();  // "PAGADOS", "POR PAGAR", ...
    static const ConsultaBoletos& consultaGerencia();    // "POR PAGAR", "PAGADOS", "RET PAGADO", ...
    static const QStringList& clasesEstatus();  // the desk's classes
    // A ticket's status as the search shows it ("NO GANADOR", "POR PAGAR", ...).
    static QString nombreEstatus(const Row& boleto);
    // The search runs on the game's tickets (or its kept copy) and lists
    // what each bought (Juego::compra).
    struct Busqueda {
        Recordset filas;
        double sumaganadores = 0;  // units bought: winner units, or tables
        double sumamonto = 0;      // money sold
        double sumadolares = 0;
        double sumacobrado = 0;    // paid
        double sumaporcobrar = 0;  // to pay
    };
    std::optional<Busqueda> buscar(const Seleccion& s, const QString& clase, const QString& caballo, bool historico,
                                   const ConsultaBoletos& consulta = consultaEscritorio(), long long hasta = 0);
    // Printing the search: its tickets refill the local ticket report table
    // (rpt_jugadas); gives the report's parameters (what was searched, the
    // race), nullopt when nothing was found or written.
    std::optional<ParametrosReporte> reporteBusqueda(const Seleccion& s, const QString& clase, const QString& caballo,
                                                     bool historico,
                                                     const ConsultaBoletos& consulta = consultaEscritorio(),
                                                     long long hasta = 0);

private:
    // Changes one ticket: asks the reason, then, with the ticket locked,
    // `cambio` checks it and writes the log row and the change; it returns
    // the refusal, or "" when the ticket was changed.
    bool cambiarBoleto(long long numero, const QString& motivoInicial, const QString& exito,
                       const std::function<QString(const Row&, const QString&)>& cambio);

    const Juego& juego_;
};

}  // namespace hipico
