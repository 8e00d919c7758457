#pragma once

#include "admin/ProcesoCarrera.h"
#include "core/Recordset.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>
#include <optional>

namespace hipico {

class Context;
class Db;

// The title under which the application speaks for itself.
inline const QString kTituloAplicacion = QStringLiteral("hipico");

// Logic of the winners pool administration (`Form_Admin_Win`): the
// administrator's desk for the winner-bet game of one day. The window's
// choices (date, track, race, centre, group) are its state; each public
// method is one command of the window. Refusals and results reach the user
// through the context's dialogs; a database failure is shown and changes
// nothing.
class AdminGanadores {
public:
    explicit AdminGanadores(Context& ctx);

    // The window's choices.
    QString fecha;                      // "YYYY-MM-DD"
    QString hipodromo;                  // track name ("" = none chosen)
    long long carrera = 1;
    QString centro = QStringLiteral("TODOS");
    QString grupo = QStringLiteral("TODOS");
    bool pagarOficial = false;          // pay the official dividend

    // Choices offered by the window.
    QStringList hipodromos() const;     // tracks in use (estatus 1)
    QStringList centros() const;        // "TODOS" then every centre
    QStringList grupos() const;         // "TODOS" then the groups of the chosen centre
    QString hipodromoPorDefecto() const;  // the settings' track

    // Sales per horse ("        CABALLO          VENTA"), also run by the timer.
    struct VentasCaballos {
        Recordset filas;                // caballo, venta
        double unidades = 0;
        double monto = 0;               // units times the unit price
    };
    VentasCaballos ventasPorCaballo();
    QStringList lineasVentas(const VentasCaballos& v) const;  // the listing's lines

    // Day totals: units sold, paid money, and paid plus due.
    struct VentasDia {
        double unidades = 0;
        double monto = 0;
        double cobrado = 0;
        double cobradoYPorCobrar = 0;
    };
    VentasDia ventasDelDia();

    Recordset taquillasDelGrupo();      // usuario, nombre, plantilla

    // The race's horses; each cell command writes one row.
    Recordset listaCarrera();
    bool cambiarEstado(long long idCarrera, int estado);
    bool cambiarApuestaMax(long long idCarrera, const QString& valor);
    bool cambiarRetirado(long long idCarrera, bool retirado);  // scratch cell

    // Per-centre limits cab1..cab16.
    std::optional<Row> cuposCentro();
    bool guardarCupo(int caballo, const QString& valor);
    bool guardarCupos(const QStringList& valores);

    // Opens (or closes) the race's winner pool; opening a processed race asks first.
    bool guardarCarrera(bool abrir);
    // The race's sale switches.
    struct Switches {
        int ganadores = 0, remate = 0, macuare = 0, tablaFija = 0, puestos = 0;
    };
    std::optional<Switches> switchesCarrera();
    bool guardarSwitches(const Switches& s);

    // The dividend rule of the chosen centre (its first group's row, or with
    // the per-track option the centre's `dividendos` row for the track), and
    // the extended runner-count fields.
    QMap<QString, QString> reglaCentro();
    bool guardarRegla(const QMap<QString, QString>& campos);

    // Result and race-level commands.
    bool procesarCarrera(const QString& ganador, const QString& dividendo, const QString& ganador2 = {},
                         const QString& dividendo2 = {});
    const ResultadoProceso& ultimoProceso() const { return ultimo_; }
    bool limpiarCarrera();
    bool anularCarrera();
    bool retirarCaballo(const QString& caballo);
    bool devolverCuatroCaballos();

    // Lay-offs and conditioned amounts of the chosen group.
    bool registrarDescarga(const QString& caballo, const QString& monto);
    struct Descargas {
        Recordset filas;
        double sumaganadores = 0;
        double sumacobrado = 0;
    };
    Descargas descargas();
    bool registrarCondicionado(const QString& caballo, const QString& monto);
    Recordset condicionados();
    bool eliminarCondicionado(long long id);

    // Single tickets.
    bool anularPorNumero(long long numero);
    bool anularPorCodigo();
    bool pagarBoleto(long long numero);
    bool devolverBoleto(long long numero);
    bool renumerarBoleto(long long numero);
    bool anularMacuare();

    // Audit of the race's tickets against their snapshot.
    struct Auditoria {
        long long enAuditoria = 0;      // snapshot rows of the race
        long long enVentas = 0;         // tickets of the race
        bool tomada = false;            // the snapshot was taken now
        Recordset alterados;            // snapshot rows with no identical ticket
    };
    std::optional<Auditoria> auditoria();
    bool borrarAuditoria();

    // Ticket search.
    static const QStringList& clasesEstatus();  // "PAGADOS", "POR PAGAR", ...
    struct Busqueda {
        Recordset filas;
        double sumaganadores = 0;
        double sumacobrado = 0;         // paid
        double sumaporcobrar = 0;       // to pay
    };
    std::optional<Busqueda> buscarBoletos(const QString& clase, const QString& caballo, bool historico);

    // The unit price of a winner bet (`configuracion.valor_ganador`).
    double valorGanador();

private:
    Db& db() const;
    // One column of a query's rows after the given first entries (a failure is shown).
    QStringList lista(const std::string& sql, const Params& params, const QString& columna,
                      QStringList primero = {}) const;
    bool porHipodromo() const;
    // The chosen track's id: with the per-track option a track must be
    // chosen; otherwise the chosen one or the settings' track.
    std::optional<long long> idHipodromo(bool exigir);
    bool grupoElegido() const;
    // Runs a command; a database failure is shown under the title.
    bool seguro(const QString& titulo, const std::function<bool()>& fn);
    std::optional<Row> boleto(long long numero);  // read with its lock (inside a transaction)
    void bitacora(const Row& b, const QString& motivo, int estatus);
    bool anular(long long numero, const QString& motivo);
    // Changes one ticket from the desk: asks the reason, then, with the ticket
    // locked, `cambio` checks it and writes the log row and the change; it
    // returns the refusal, or "" when the ticket was changed.
    bool cambiarBoleto(long long numero, const QString& motivoInicial, const QString& exito,
                       const std::function<QString(const Row&, const QString&)>& cambio);

    Context& ctx_;
    ResultadoProceso ultimo_;
};

}  // namespace hipico
