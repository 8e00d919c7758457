#pragma once

#include "admin/Escritorio.h"
#include "reportes/Reporte.h"
#include "sales/JuegoGanadores.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

// The desk's tickets tab: single tickets of a game (void by number or by
// code, pay, refund; the winner game's by default), the winner ticket's
// renumbering, the Macuare void, the audit of the selected race and the
// ticket search.
class BoletosEscritorio : public ComandoEscritorio {
public:
    explicit BoletosEscritorio(Context& ctx, const Juego& juego = juegoGanadores())
        : ComandoEscritorio(ctx), juego_(juego) {}

    // The void flow of the desk: a paid ticket stays, and a ticket of a
    // processed race goes only with the administrator's code.
    bool anularPorNumero(long long numero);
    bool anularPorCodigo();
    // Pays a due ticket as of its sale date; refunds an unpaid one.
    bool pagar(long long numero);
    bool devolver(long long numero);
    bool renumerar(long long numero);
    bool anularMacuare();

    // Audit of the race's tickets against their snapshot.
    struct Auditoria {
        long long enAuditoria = 0;  // snapshot rows of the race
        long long enVentas = 0;     // tickets of the race
        bool tomada = false;        // the snapshot was taken now
        Recordset alterados;        // snapshot rows with no identical ticket
    };
    std::optional<Auditoria> auditoria(const Seleccion& s);
    bool borrarAuditoria(const Seleccion& s);

    // Ticket search.
    static const QStringList& clasesEstatus();  // "PAGADOS", "POR PAGAR", ...
    struct Busqueda {
        Recordset filas;
        double sumaganadores = 0;
        double sumacobrado = 0;    // paid
        double sumaporcobrar = 0;  // to pay
    };
    std::optional<Busqueda> buscar(const Seleccion& s, const QString& clase, const QString& caballo, bool historico);
    // Printing the search: its tickets refill the local ticket report table
    // (rpt_jugadas); gives the report's parameters (what was searched, the
    // race), nullopt when nothing was found or written.
    std::optional<ParametrosReporte> reporteBusqueda(const Seleccion& s, const QString& clase, const QString& caballo,
                                                     bool historico);

private:
    // Changes one ticket: asks the reason, then, with the ticket locked,
    // `cambio` checks it and writes the log row and the change; it returns
    // the refusal, or "" when the ticket was changed.
    bool cambiarBoleto(long long numero, const QString& motivoInicial, const QString& exito,
                       const std::function<QString(const Row&, const QString&)>& cambio);

    const Juego& juego_;
};

}  // namespace hipico
