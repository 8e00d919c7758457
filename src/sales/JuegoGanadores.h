#pragma once

#include "core/Recordset.h"
#include "sales/AjustesLocales.h"
#include "sales/Flujos.h"

#include <QHash>
#include <QString>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;
struct Session;

// The winner-bet game ("Ganadores"): tickets in ma_principal (kept copy
// ventas_ganadores, day rows ventas_ganadores_general, audit log bitacora),
// codes prefixed by "1" or the group code, three sale keys re-checked at
// payment; it pays winners (of the sale day only) and refunds. A ticket of a
// processed race is not voided.
const Juego& juegoGanadores();

// Whether the race of that date already has its winner set
// ("SELECT distinct win_ganadores FROM carreras where fecha= ... and carrera= ...").
bool carreraProcesada(Db& db, const QString& fecha, long long carrera);

// The price of one unit for the session's group: the group's own, else the system's.
double valorGanador(const Session& s);

// A winner bet as typed at the booth.
struct PedidoGanador {
    QString carrera, caballo, monto, cliente;  // client: user name, "" for none
    UnidadVenta unidad = UnidadVenta::Ganadores;
    bool autorizada = false;  // finished with the supervisor's password
};

// A sold winner ticket, as the window shows it.
struct BoletoVendido {
    long long numero = 0;
    QString codigo;
    long long carrera = 0;
    long long caballo = 0;
    QString nombreCaballo;
    double ganadores = 0;
    double costo = 0;
    QString fecha;
    QString hora;
    bool conClave = false;  // sold with the supervisor password (keys left at zero)
};

// The printed ticket of a sold winner bet, with the group's parameters
// (validity, company data, track): the sale's own ticket, or one printed again.
Impreso ticketGanador(Context& ctx, const Row& grupo, const BoletoVendido& b, bool grafico);

// The group's winner-sale parameters (read again for every sale), with the
// key of the horse's race-card row on the group's track. The race open for
// sale and the track are the group's own when it has them, else the
// system's current ones.
// The row also carries the race's runners on the group's track
// (`cant_cabs`) and the centre's quota for the horse (`cupo`, NULL: none),
// and `marca`, the change mark of the groups, the system settings, the
// runners and the quotas (`configuracion.revision`, moved by the server at
// every change).
Row parametrosGanadores(Context& ctx, const QString& carrera, const QString& caballo);

// The parameters a booth keeps between its sales: the last row read for
// each race and horse of its group and working day. A sale checks the row it
// runs on, kept or just read, under the horse's lock (the change mark; a kept
// one also the locked row still the race, horse and track asked); when
// anything moved, the sale starts again on a row read afresh
// (ParametrosCambiados).
class ParametrosGuardados {
public:
    // The kept row of that race and horse, if any.
    std::optional<Row> buscar(const Context& ctx, const QString& carrera, const QString& caballo) const;
    // Read afresh, and kept when it names the horse's race-card row.
    Row leer(Context& ctx, const QString& carrera, const QString& caballo);
    void olvidar() { filas_.clear(); }

private:
    QHash<QString, Row> filas_;  // by group, day, race and horse
    long long marca_ = 0;        // the change mark they were read under
};

// Thrown by the sale's locks when the parameters it ran on are out of
// date: nothing was written, the transaction is rolled back.
struct ParametrosCambiados {};
// The race open for sale and the track of the booth's group, as above.
struct CarreraYPista {
    long long carrera = 0;
    long long pista = 0;
};
CarreraYPista carreraYPista(Context& ctx);

// The sale of one winner bet: the horse's race-card rows (of every track when
// the centre's quota is shared) and the client's row are locked, then the
// checks run in their order.
class VentaGanador final : public Jugada {
public:
    // `guardado`: the group's row is a copy kept since an earlier sale,
    // checked under the horse's lock.
    VentaGanador(Context& ctx, PedidoGanador pedido, Row grupo, bool guardado = false);

    void preparar(Db& db) override;
    void bloquear(Db& db) override;
    std::vector<Chequeo> chequeos() override;
    Insercion fila(const QString& ficha) const override;
    QString prefijo() const override;
    QString fecha() const override { return fecha_; }
    void completar(Db& db, long long numero, const QString& codigo) override;
    Impreso ticket(long long numero, const QString& codigo, bool grafico) const override;
    double dinero() const override { return dinero_; }

    BoletoVendido boleto(long long numero, const QString& codigo) const;

private:
    // The checks, in the order the booth runs them: the race and the amount,
    // the horse, the quotas and the field, then the client.
    std::optional<Rechazo> carreraAbierta(), montoValido(), montoMinimo();
    std::optional<Rechazo> caballoValido(), carreraPermitida(), caballoCorre();
    std::optional<Rechazo> cupoAbierto(), cuatroCorredores(), cupoDelCaballo(), maximoPorBoleto();
    std::optional<Rechazo> clienteExiste(), saldoDelCliente(), limiteDelCliente();

    // The race's runners and, with quotas on, what the horse sold and its quota.
    struct Cupo {
        long long corredores = 0;
        double vendido = 0;
        std::optional<double> cupo;
    };
    const Cupo& cupo();
    // What is left, as the refusal says it (units, or money when selling in bolívares).
    QString disponible(double unidadesLibres) const;

    Context& ctx_;
    PedidoGanador pedido_;
    Row grupo_;
    bool guardado_ = false;
    Db* db_ = nullptr;
    QString fecha_;
    QString hora_;
    double valor_ = 0;  // price of one unit
    std::optional<long long> carrera_, caballo_;
    QVector<long long> aBloquear_;
    Row caballoFila_;  // the horse's row on the group's track, locked
    bool existe_ = false;
    Recordset cliente_;
    double unidades_ = 0;
    double dinero_ = 0;
    std::optional<Cupo> cupo_;
};

}  // namespace hipico
