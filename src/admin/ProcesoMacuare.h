#pragma once

#include "reportes/Alcance.h"
#include "sales/JuegoMacuare.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <array>
#include <optional>

namespace hipico {

class Context;
class Db;

// The Macuare administration (form_Admin_MC, Form_Admin_Express): the day's
// legs, opening and closing the Macuare, the winners of each leg and the
// settlement of the pool. Every command runs in one transaction with the
// day's row (macuare_dias) locked: sales share that lock, so a close or a
// settlement never crosses a sale.
//
// The rules:
// - The legs are races carrera1 .. carrera1 + 6 of the day's track.
// - A leg may have up to three winners (a dead heat); a ticket hits the leg
//   when its pick is one of them.
// - A pick scratched after the sale runs as the leg's favourite (the
//   running horse marked favorito, else the lowest running number): it hits
//   when that horse won.
// - The pool is the day's Macuare sales (amount x veces) less the house
//   share (porcentaje_casa percent), plus what the last settled day carried.
//   It is shared among the tickets that hit all seven legs in proportion to
//   amount x veces, each share cut down to the cent (the cents left over stay
//   with the house). With no such ticket the whole pool carries to the next day.
// - Winning tickets become due (status 1, `cobrado`); settling again (a leg
//   corrected) first turns the due tickets back to 0 and settles anew; paid
//   tickets (status 2) are never touched and keep their share in the weights.

using GanadoresDia = std::array<QVector<long long>, kPiernas>;

// What a settlement found.
struct Liquidacion {
    bool hecha = false;         // all seven legs had winners
    double venta = 0;           // the day's sales
    double casa = 0;            // the house share
    double arrastre = 0;        // carried in
    double pozo = 0;            // shared (or carried out)
    double peso = 0;            // amount x veces of the winning tickets
    long long ganadores = 0;    // winning tickets
    double repartido = 0;       // paid out in shares
    double arrastreSiguiente = 0;
};

// The tickets and combinations still alive after the legs entered so far, by group.
struct VivosGrupo {
    QString grupo;
    long long boletos = 0;
    long long combinaciones = 0;
    double monto = 0;
};

class ProcesoMacuare {
public:
    explicit ProcesoMacuare(Context& ctx) : ctx_(ctx) {}

    // The day's Macuare as stored (or its defaults when none yet).
    DiaMacuare dia(const QString& fecha);
    // Sets the day's track, first leg and house share (refused once tickets were sold).
    bool configurar(const QString& fecha, long long hipodromo, long long carrera1, double porcentajeCasa);
    // Opens / closes the Macuare: configuracion.venta_macuare and the legs' venta_mc.
    bool abrir(const QString& fecha, bool abierto);

    GanadoresDia ganadores(const QString& fecha);
    // Sets the winners of a leg (0..6; empty clears it), checked against the
    // leg's runners. Once all seven legs have winners the day is settled (again).
    std::optional<Liquidacion> fijarGanadores(const QString& fecha, int pierna, const QVector<long long>& caballos);
    // Settles the day again with the winners stored.
    std::optional<Liquidacion> liquidar(const QString& fecha);
    // The settlement stored for the day, if any.
    std::optional<Liquidacion> liquidacion(const QString& fecha);

    QVector<VivosGrupo> vivos(const QString& fecha);
    // The pool the day's sales make so far (before its settlement): sales
    // less the house share, plus what the last settled day carried.
    double pozoHastaAhora(const QString& fecha);

    // ---- Single tickets ----
    // Asks the code ("INGRESE EL CODIGO DEL BOLETO DEL MACUARE") and voids
    // the ticket through the void flow: only a ticket not yet a winner, and
    // only while the Macuare sells; audit row and combination register with it.
    bool anularBoleto(const Alcance& alcance = {});
    // Pays a due winner at the desk (status 2, paid on its sale date), with
    // the reason asked and an audit row; the group's day row moves with it.
    bool pagarBoleto(const QString& codigo);
    // The day's tickets of a group ("TODOS": every group) in a status class:
    // "PAGADOS", "POR PAGAR", "NO GANADORES" or "TODAS".
    Recordset buscarBoletos(const QString& fecha, const QString& grupo, const QString& clase);
    static const QStringList& clasesBusqueda();

private:
    // Inside a transaction with the day's row locked.
    Liquidacion liquidarBloqueado(Db& db, const DiaMacuare& d, const GanadoresDia& g);
    void deshacer(Db& db, const QString& fecha);
    DiaMacuare bloquearDia(Db& db, const QString& fecha);
    GanadoresDia leerGanadores(Db& db, const QString& fecha);
    // The picks that hit each leg: its winners, and its scratched horses when its favourite won.
    GanadoresDia aciertos(Db& db, const DiaMacuare& d, const GanadoresDia& g);

    Context& ctx_;
};

// The condition "v1 IN (?,...) and v2 IN (...)" for the legs that have
// picks, with its bound values appended to `params` ("" when none).
std::string condicionAciertos(const GanadoresDia& aciertos, Params& params);

}  // namespace hipico
