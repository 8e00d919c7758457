#pragma once

#include "sales/ImpresoraTaquilla.h"
#include "sales/JuegoMacuare.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>
#include <optional>

namespace hipico {

class Context;

// Logic of the Macuare sale window (form_Venta_MC): the Macuare game run by
// the sale, payment and void flows, plus what the window keeps between its
// events (the ticket accepted for payment, the last ticket sold). A database
// failure is reported once by the error guard and leaves the window as it was.
class VentaMacuare {
public:
    explicit VentaMacuare(Context& ctx);

    // Window load: printing settings.
    void cargar();
    // The sale state label: "CERRADO" when the Macuare does not sell, else "".
    QString estado();
    // The day's seven legs (race numbers), empty when the day has no Macuare.
    QVector<long long> piernas();
    // How many combinations the day has sold: read from the program's
    // rsCombinaciones, reopened on combinaciones_general first (AbrirCombinaciones),
    // as the local report tables may hold it.
    long long combinacionesDelDia();

    // ---- Sale (Boton_Agregar) ----
    struct Resultado {
        bool vendido = false;
        BoletoMacuareVendido boleto;
        int pierna = -1;  // refused: the leg at fault (0..6), or -1 for the amount
    };
    Resultado vender(const PedidoMacuare& pedido);
    const std::optional<BoletoMacuareVendido>& ultimoBoleto() const { return ultimo_; }
    // F9: a copy of the last ticket sold.
    bool reimprimir();

    // ---- Payment (Text_boletoCobro, Boton_Cobrar_Boleto2) ----
    ConsultaCobro buscarBoletoCobro(const QString& codigo);
    const std::optional<ConsultaCobro>& boletoPorCobrar() const { return porCobrar_; }
    bool cobrarBoleto();

    // ---- Void by code (Text_nu_ba + Enter) ----
    // "BOLETO NO EXISTE"; a ticket already a winner or paid, of another booth
    // or of an earlier day: "NO SE PUEDE ANULAR ESTE BOLETO"; the Macuare
    // closed: "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS".
    bool anularPorCodigo(const QString& codigo);

    // ---- Totals, list and printed summary ----
    TotalesDia Totalizar_Dia();
    QVector<BoletoMacuareVendido> Command19();
    bool imprimirResumen();

    QString montoPantalla(double monto) const;

private:
    Context& ctx_;
    ImpresoraTaquilla impresora_;
    std::shared_ptr<JugadaMacuare> incierta_;
    std::optional<ConsultaCobro> porCobrar_;
    std::optional<BoletoMacuareVendido> ultimo_;
    int diasValidez_ = 0;
};

}  // namespace hipico
