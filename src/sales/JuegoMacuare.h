#pragma once

#include "core/Recordset.h"
#include "sales/Flujos.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <array>
#include <optional>

namespace hipico {

class Context;
class Db;

// The Macuare game: one horse in each of seven consecutive races of the day
// (the legs), bought for an amount and a multiplier ("veces") under the
// buyer's name. Tickets in macuares (kept copy ventas_mc, day rows
// ventas_mc_general, audit log bitacora_mc), codes prefixed by "5"; it pays
// winners only. Every combination sold on a day is in combinaciones_general
// with the amount sold on it. A ticket is voided only while the Macuare sells.
const Juego& juegoMacuare();

constexpr int kPiernas = 7;
using Piernas = std::array<long long, kPiernas>;

// The text of a combination: the seven horse numbers in leg order joined by
// "-" ("3-1-7-2-5-4-6"); the key of the quota and of the combination register.
QString textoCombinacion(const Piernas& v);

// The Macuare of a day (macuare_dias): its track, its first leg's race (the
// legs are that race and the six after it) and the house share.
struct DiaMacuare {
    bool existe = false;
    QString fecha;
    long long hipodromo = 0;
    long long carrera1 = 1;
    double porcentajeCasa = 0;
    long long carrera(int pierna) const { return carrera1 + pierna; }  // pierna 0..6
};
DiaMacuare diaMacuare(Db& db, const QString& fecha);
// Whether the Macuare sells: the system's switch (configuracion.venta_macuare)
// and the first leg's race open for it (carreras.venta_mc).
bool macuareAbierto(Db& db, const QString& fecha);

// A Macuare bet as typed at the booth.
struct PedidoMacuare {
    QStringList piernas;  // seven horse numbers
    QString monto, veces, nombre;
};

// A sold Macuare ticket, as the window and the ticket show it.
struct BoletoMacuareVendido {
    long long numero = 0;
    QString codigo;
    Piernas v{};
    double monto = 0;
    long long veces = 1;
    QString nombre;
    QString fecha, hora;
    QString grupo;
};

// The printed ticket of a Macuare sale.
Impreso ticketMacuare(Context& ctx, const BoletoMacuareVendido& b, int diasValidez, bool grafico);
// The payment slip of a Macuare ticket.
Impreso reciboMacuare(const DatosCobro& c, bool grafico);

// The group's Macuare parameters for a sale (read again for every sale).
Row parametrosMacuare(Context& ctx);

// The sale of one Macuare ticket: the day's row is share-locked (a close
// waits for the sales under way, and no sale passes a close), then the
// combination's register row is locked (the quota of a combination is
// checked by one booth at a time); the checks run in their order.
class JugadaMacuare final : public Jugada {
public:
    JugadaMacuare(Context& ctx, PedidoMacuare pedido, Row grupo);

    void preparar(Db& db) override;
    void bloquear(Db& db) override;
    std::vector<Chequeo> chequeos() override;
    Insercion fila(const QString& ficha) const override;
    QString prefijo() const override { return QStringLiteral("5"); }
    QString fecha() const override { return fecha_; }
    void completar(Db& db, long long numero, const QString& codigo) override;
    Impreso ticket(long long numero, const QString& codigo, bool grafico) const override;

    BoletoMacuareVendido boleto(long long numero, const QString& codigo) const;
    // The leg a refusal is about (0..6), or -1.
    int piernaRechazada() const { return piernaMala_; }

private:
    std::optional<Rechazo> abierto(), montoValido(), vecesValidas(), maximo(), caballosValidos(), cupo();

    Context& ctx_;
    PedidoMacuare pedido_;
    Row grupo_;
    Db* db_ = nullptr;
    QString fecha_, hora_;
    DiaMacuare dia_;
    Piernas v_{};
    QString combinacion_;
    double monto_ = 0;
    long long veces_ = 1;
    bool registrada_ = false;  // the combination was already sold today
    // The first leg's horse's race-card row sells Macuare (read under its lock).
    bool primeraAbierta_ = false;
    int piernaMala_ = -1;
};

// The booth's Macuare figures of the working day (Totalizar_Dia, Cuadrar).
TotalesDia totalesMacuare(Context& ctx);
// The printed summary: the booth block under "-- VENTA MACUARE --".
Impreso resumenMacuare(Context& ctx, bool grafico);

// The booth's tickets of the day, newest first (Command19).
QVector<BoletoMacuareVendido> listaMacuares(Context& ctx);
// The column heads of that list.
const QStringList& encabezadosListaMacuare();

}  // namespace hipico
