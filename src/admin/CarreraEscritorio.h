#pragma once

#include "admin/Escritorio.h"
#include "admin/ProcesoCarrera.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

// The desk's race tab: the race's sales, its race-card cells and sale
// switches, its result and the race-level refunds.

// Sales of the selected race and day.
class VentasCarrera : public ComandoEscritorio {
public:
    explicit VentasCarrera(Context& ctx) : ComandoEscritorio(ctx) {}

    // Which tickets the sales per horse count: the desk leaves out voided
    // ones ("estatus <> 5"); the manager's windows count them all, with or
    // without their status term "(estatus<> 3 or estatus <> 4)" (true for
    // every status, kept as it stands), and only of the chosen centre.
    enum class Conteo { SinAnulados, TerminoDevoluciones, Todos };
    // Sales per horse ("        CABALLO          VENTA"), of the chosen group
    // or of all in the scope; also run by the window's timer.
    struct VentasCaballos {
        Recordset filas;   // caballo, venta
        double unidades = 0;
        double monto = 0;  // units times the unit price
        bool cerrada = false;  // the race no longer sells ("CERRADO")
        QVector<long long> caballos;  // the manager's: every horse of the race, by number
    };
    VentasCaballos ventasPorCaballo(const Seleccion& s, Conteo conteo = Conteo::SinAnulados);
    // The listing's lines: one per horse sold (per horse of the race for the
    // manager, unsold ones with 0); with a centre's limits row (cab1..cab16),
    // each horse's limit beside its sales.
    QStringList lineasVentas(const VentasCaballos& v, const std::optional<Row>& cupos = std::nullopt) const;

    // The day's totals: units sold, paid money, and paid plus due.
    struct VentasDia {
        double unidades = 0;
        double monto = 0;
        double cobrado = 0;
        double cobradoYPorCobrar = 0;
    };
    VentasDia ventasDelDia(const Seleccion& s);
};

// The selected race's race card: its horses, one cell written at a time, and
// the race's sale switches.
class TarjetaCarrera : public ComandoEscritorio {
public:
    explicit TarjetaCarrera(Context& ctx) : ComandoEscritorio(ctx) {}

    Recordset listaCarrera(const Seleccion& s);
    bool cambiarEstado(const Seleccion& s, long long idCarrera, int estado);
    bool cambiarApuestaMax(const Seleccion& s, long long idCarrera, const QString& valor);
    // The scratch cell: scratching clears the horse's auction cells;
    // unscratching makes its unpaid tickets and lay-offs open again.
    bool cambiarRetirado(const Seleccion& s, long long idCarrera, bool retirado);

    // Opens (or closes) the race's winner pool; opening a processed race asks first.
    bool guardarCarrera(const Seleccion& s, bool abrir);
    struct Switches {
        int ganadores = 0, remate = 0, macuare = 0, tablaFija = 0, puestos = 0;
    };
    std::optional<Switches> switchesCarrera(const Seleccion& s);
    bool guardarSwitches(const Seleccion& s, const Switches& sw);
};

// The selected race's result and the refunds of a race, a horse or a group.
class ResultadoCarrera : public ComandoEscritorio {
public:
    explicit ResultadoCarrera(Context& ctx) : ComandoEscritorio(ctx) {}

    // Checks the winners (a second one in a dead heat) and their dividends,
    // asks before processing a processed race again, then processes it for
    // the selected centre (or all). The result, or nullopt when refused.
    std::optional<ResultadoProceso> procesar(const Seleccion& s, const QString& ganador, const QString& dividendo,
                                             const QString& ganador2 = {}, const QString& dividendo2 = {},
                                             bool pagarOficial = false);
    bool limpiar(const Seleccion& s);
    // The manager's clean ("DIVIDENDOS"): the scope's unsettled tickets of
    // the race back to sold, their keys left as they are.
    bool limpiarDividendos(const Seleccion& s);
    bool anular(const Seleccion& s);
    bool retirarCaballo(const Seleccion& s, const QString& caballo);
    bool devolverCuatroCaballos(const Seleccion& s);

private:
    bool limpiarCarrera(const Seleccion& s, const QString& pregunta, const QString& titulo, const char* sql);
};

}  // namespace hipico
