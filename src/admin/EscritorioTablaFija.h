#pragma once

#include "admin/Escritorio.h"
#include "core/Recordset.h"

#include <QString>
#include <optional>

namespace hipico {

class Db;

// Processing a race's fixed-table result, in one transaction with the race's
// card rows locked (a sale of the race waits, then finds it closed): the
// race's due tickets (1, 4) go back to sold, tickets on a horse scratched for
// the table become refunds due (4, `cobrado` = `monto`), tickets on the
// winner become winners due (1, `cobrado` = tables x the prize of one
// table), and the race is marked processed and closed. Paid tickets (2, 3)
// are never touched. Tickets are those of the race and day, of every group.
struct ProcesoTablaFija {
    long long ganadores = 0;     // tickets settled as winners
    long long devoluciones = 0;  // tickets turned into refunds
    double premio = 0;           // prize of one table used
};
ProcesoTablaFija procesarTablaFija(Db& db, const QString& fecha, long long carrera, long long idHipodromo,
                                   long long ganador);

// The fixed-table administrator's desk (Form_Admin_TF): what the winners
// desk does for winner bets, on the fixed table of the selected day, race
// and track. Single tickets go through the winners desk's ticket commands
// given the fixed-table game (BoletosEscritorio).
class EscritorioTablaFija : public ComandoEscritorio {
public:
    explicit EscritorioTablaFija(Context& ctx) : ComandoEscritorio(ctx) {}

    // The race's horses on the track: id_carrera, nu_caballo, caballo,
    // valor_tf, retirado_tf, apuesta_max_tf, venta_tf, bloqueotf, estado_tf.
    Recordset caballos(const Seleccion& s);
    // One horse's table price, its scratching for the table, its maximum per ticket.
    bool fijarValor(const Seleccion& s, long long idCarrera, const QString& valor);
    bool retirar(const Seleccion& s, long long idCarrera, bool retirado);
    bool fijarMaximo(const Seleccion& s, long long idCarrera, const QString& valor);
    // Opens or closes the race's fixed-table pool (closing also blocks it);
    // opening a processed race asks first.
    bool abrir(const Seleccion& s, bool abierta);

    // The prize of one table (configuracion.valortablafija).
    double premio();
    bool fijarPremio(const QString& valor);

    // The centre's quota row (venta_cupo_tf, cab1..cab14; created when missing).
    std::optional<Row> cupos(const QString& centro);
    bool fijarCupo(const QString& centro, long long caballo, const QString& valor);

    // The race's result: asks again for a processed race.
    std::optional<ProcesoTablaFija> procesar(const Seleccion& s, const QString& caballo);
    // Winners due go back to sold and the race is no longer processed.
    bool limpiar(const Seleccion& s);
    // Every unpaid ticket of the race (of the group, or all) becomes a refund due.
    bool anularCarrera(const Seleccion& s);

private:
    // One horse's number cell (the column is the caller's, never the user's).
    bool fijarCelda(const Seleccion& s, long long idCarrera, const char* columna, const QString& valor);

public:
    // The day's fixed-table money: sold, and paid or due.
    struct TotalesDia {
        double venta = 0;
        double cobrado = 0;
    };
    std::optional<TotalesDia> totales(const Seleccion& s);
};

}  // namespace hipico
