#pragma once

#include "core/Textos.h"
#include "sales/BoletosTaquilla.h"
#include "sales/CifrasGanadores.h"
#include "sales/CuadreCaja.h"
#include "sales/ImpresoraTaquilla.h"
#include "sales/JuegoGanadores.h"

#include <QString>
#include <QVector>
#include <memory>
#include <optional>

namespace hipico {

class Context;

// Logic of the winner-bet sale window (Form_Venta_WIN): the winner game run
// by the sale, payment and void flows, plus what the window keeps between
// its events (sale unit, a sale waiting for the supervisor's password, the
// ticket accepted for payment, the last printed piece). A database failure
// is reported once by the error guard and leaves the window as it was.
class VentaGanadores {
public:
    explicit VentaGanadores(Context& ctx);

    // Window load: printing settings, the sale unit of this machine.
    void cargar();

    // ---- Sale (Boton_Procesar) ----
    enum class Resultado { Vendido, Rechazado, PedirClave };
    using Boleto = BoletoVendido;
    // The boxes of a sale, in the order they are typed.
    enum class Campo { Carrera, Caballo, Cliente, Monto };
    struct Venta {
        Resultado resultado = Resultado::Rechazado;
        Boleto boleto;               // when sold
        Campo campo = Campo::Monto;  // when refused: the box at fault
    };
    // race, horse and amount as typed (amount in the sale unit), and the
    // client's user name ("" = no client).
    Venta procesarVenta(const QString& carrera, const QString& caballo, const QString& monto,
                        const QString& cliente = {});
    // The box a refusal of the sale is about.
    static Campo campoDe(const QString& rechazo);
    // Enter in the horse box: a horse the race does not have, or a scratched
    // one, is refused there and then (the runners as the window shows them;
    // none shown: the sale decides).
    bool revisarCaballo(const QVector<CorredorCarrera>& corredores, const QString& caballo);
    // What the amount typed costs, shown before Enter: "COSTO: Bs. 25,00"
    // selling units, "= 2,5 GANADORES" selling money ("" for no amount).
    QString textoCosto(const QString& monto) const;
    // The last ticket this window sold, while it stands (not voided).
    const std::optional<Boleto>& ultimoBoleto() const { return ultimo_; }

    // A sale whose connection broke is still to be looked up: the next
    // procesarVenta does it first.
    bool ventaIncierta() const { return incierta_ != nullptr; }
    // The password frame (MostrarFrameClave) is waiting for the supervisor.
    bool esperandoClave() const { return pendiente_.has_value(); }
    // Text_Clave + Enter: the refused sale is finished by the password path
    // when the password is the group's clave_win.
    Venta ventaConClave(const QString& clave);
    void cancelarClave() { pendiente_.reset(); }

    // ---- Payment ----
    using Consulta = ConsultaCobro;
    // Text_boletoCobro + Enter: looks the ticket up and checks it; refusals
    // are shown to the user. A payable ticket is kept for cobrarBoleto.
    Consulta buscarBoletoCobro(const QString& codigo);
    const std::optional<Consulta>& boletoPorCobrar() const { return porCobrar_.consulta(); }
    // Boton_Cobrar_Boleto2: pays the ticket accepted by the lookup (1 -> 2,
    // 4 -> 3) exactly once, and prints the payment slip.
    bool cobrarBoleto();

    // ---- Void (anular_boleto_menu) ----
    bool puedeAnular() const;
    // By code (asked), or a ticket of the booth's list by its number; the
    // ticket is shown before it goes. Forgets the last ticket when it was the
    // one voided.
    bool anularBoleto(long long numero = 0);

    // ---- The booth's tickets and copies ----
    // F9: a copy of the last ticket sold, or of a ticket of the booth's list.
    // A voided ticket is never printed again.
    bool reimprimir(long long numero = 0);
    QVector<BoletoDia> boletosDelDia();

    // ---- Cash-up (boton_cuadrefinal) ----
    // The stretch since the last cash-up, as the window shows it.
    TramoCaja desdeUltimoCuadre();
    // Asks the cash counted in the drawer, records the cash-up and prints the
    // day's summary with the cash-up under it. Cancelled: nothing happens.
    bool cuadreFinal();

    // ---- Running totals and lists ----
    TotalesDia Totalizar_Dia() { return Cuadrar(0, 0); }
    using VentaCaballo = hipico::VentaCaballo;
    QVector<VentaCaballo> Calcular_VentasCaballos(long long carrera);
    using Corredor = CorredorCarrera;
    QVector<Corredor> corredores(long long carrera);
    using CarreraDia = hipico::CarreraDia;
    QVector<CarreraDia> carreras();
    // The group's race open for sale (the window starts on it).
    long long carreraDelGrupo() const;

    // ---- Sale unit ----
    UnidadVenta unidad() const { return unidad_; }
    // Asks the confirmation, stores the choice in this machine's file and
    // tells the user; returns whether it changed.
    bool cambiarUnidad(UnidadVenta nueva);
    // "$" or "BS": the currency label of the amount box and of the bolívar entry.
    QString etiquetaMoneda() const;

    // ---- Printed summary (Bton_ImprimirRV) and final cash-up ----
    // Races from..to; 0, 0 = all races ("TODAS").
    bool imprimirResumen(long long desde, long long hasta);
    TotalesDia Cuadrar(long long desde = 0, long long hasta = 0);

    // Amounts as this window shows them (mascara 1: plain numbers).
    QString montoPantalla(double monto) const;
    bool enDolares() const;
    double valorGanador() const;

private:
    // `guardado`: `grupo` was read before this sale (kept, or the refused
    // sale's): checked under the horse's lock, and read again when it moved.
    Venta vender(const PedidoGanador& pedido, const Row& grupo, bool guardado);

    Context& ctx_;
    ImpresoraTaquilla impresora_;
    UnidadVenta unidad_ = UnidadVenta::Ganadores;
    struct Pendiente {
        PedidoGanador pedido;
        Row grupo;
    };
    std::optional<Pendiente> pendiente_;
    // A sale whose connection broke before its outcome could be found out.
    std::shared_ptr<VentaGanador> incierta_;
    CobroEnEspera porCobrar_;
    std::optional<Boleto> ultimo_;
    ParametrosGuardados parametros_;
};


}  // namespace hipico
