#pragma once

#include "core/Recordset.h"
#include "sales/Flujos.h"
#include "sales/Tickets.h"

#include <QString>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;

// The fixed-table game ("Tabla Fija"): the buyer takes a number of tables on
// one horse at that horse's table price (`valor_tf`). Tickets in tablafija
// (kept copy ventas_tf, day rows ventas_tf_general, audit log bitacora_tf),
// codes prefixed by "2", no sale keys; it pays winners (of the sale day only)
// and refunds. A ticket of a closed or processed race is not voided.
const Juego& juegoTablaFija();

// Fixed-table horse numbers go up to this (the quota row has cab1..cab14).
constexpr long long kCaballosTablaFija = 14;

// A race's fixed-table state, on the race card's rows of the group's track:
// the pool open for sale (`venta_tf`), not blocked by the administrator
// (`bloqueotf`) and its result not processed (`estado_tf`).
bool tablaFijaAbierta(const Row& caballo);
// Whether the race of that date no longer takes fixed-table changes on the
// track of the group (no row still open as above).
bool tablaFijaCerrada(Db& db, const QString& grupo, const QString& fecha, long long carrera);

// A fixed-table sale as typed at the booth.
struct PedidoTablaFija {
    QString carrera, caballo, tablas;
};

// A sold fixed-table ticket, as the window shows and prints it.
struct BoletoTablaFijaVendido {
    long long numero = 0;
    QString codigo;
    long long carrera = 0;
    long long caballo = 0;
    QString nombreCaballo;
    long long tablas = 0;
    double monto = 0;
    QString fecha, hora;
};

// The printed ticket, with the group's parameters (validity, company data,
// the fixed-table message `mensajetf`) and the track's name.
Impreso ticketTablaFija(Context& ctx, const Row& grupo, const BoletoTablaFijaVendido& b, bool grafico);
// The payment slip.
Impreso reciboTablaFija(const DatosCobro& c, bool grafico);

// The group's fixed-table sale parameters (read again for every sale), with
// the key of the horse's race-card row on the group's track.
Row parametrosTablaFija(Context& ctx, const QString& carrera, const QString& caballo);

// The sale of one fixed-table ticket. Every race-card row of the race's horse
// (all tracks, by key order) is locked, then the checks run in their order:
// tables, horse, race, the horse in the race, scratched for the table, the
// race's state, the quota, the tables per ticket, the money per ticket.
// Before the operator confirmed the summary a closed race says "LA CARRERA
// ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS"; found closed once confirmed
// (the sale itself), "LA CARRERA SE ENCUENTRA CERRADA".
class JugadaTablaFija final : public Jugada {
public:
    JugadaTablaFija(Context& ctx, PedidoTablaFija pedido, Row grupo);

    void preparar(Db& db) override;
    void bloquear(Db& db) override;
    std::vector<Chequeo> chequeos() override;
    Insercion fila(const QString& ficha) const override;
    QString prefijo() const override { return QStringLiteral("2"); }
    QString fecha() const override { return fecha_; }
    void completar(Db& db, long long numero, const QString& codigo) override;
    Impreso ticket(long long numero, const QString& codigo, bool grafico) const override;

    // The checks ran and the operator accepted the summary: the sale writes.
    void confirmar() { confirmada_ = true; }
    // The summary the operator is shown before the sale writes.
    QString resumen(bool enDolares) const;
    BoletoTablaFijaVendido boleto(long long numero, const QString& codigo) const;

private:
    std::optional<Rechazo> tablasValidas(), caballoValido(), carreraPermitida(), caballoExiste();
    std::optional<Rechazo> caballoRetirado(), carreraAbierta(), cupoDelCaballo(), tablasPorBoleto(),
        montoPorBoleto();

    Context& ctx_;
    PedidoTablaFija pedido_;
    Row grupo_;
    Db* db_ = nullptr;
    QString fecha_, hora_;
    std::optional<long long> carrera_, caballo_, tablas_;
    QVector<long long> aBloquear_;
    Row caballoFila_;
    bool existe_ = false;
    bool confirmada_ = false;
};

// The booth's figures of the fixed-table game for the working day (races
// from..to; 0, 0 = every race).
TotalesDia totalesTablaFija(Context& ctx, long long desde, long long hasta);
// The printed "RESUMEN DE VENTAS" of the fixed-table game.
Impreso resumenTablaFija(Context& ctx, long long desde, long long hasta, bool grafico);

// A horse of a race as the fixed-table windows show it: its table price and
// state, and the tables and money sold on it (by the booth's centre when
// `ch` is given, else by everyone).
struct CaballoTablaFija {
    long long numero = 0;
    QString nombre;
    double valor = 0;
    bool retirado = false;
    double tablas = 0;
    double venta = 0;
};
QVector<CaballoTablaFija> caballosTablaFija(Context& ctx, long long carrera, const QString& ch = {});

}  // namespace hipico
