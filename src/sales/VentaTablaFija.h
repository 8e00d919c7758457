#pragma once

#include "sales/ImpresoraTaquilla.h"
#include "sales/JuegoTablaFija.h"

#include <QString>
#include <QVector>
#include <memory>
#include <optional>

namespace hipico {

class Context;

// Logic of the fixed-table sale window (Form_Venta_TF): the fixed-table game
// run by the sale, payment and void flows, plus what is its own: the summary
// the operator accepts or declines before the sale writes, and the void of
// the centre's newest ticket. A database failure goes to the caller (the
// window's guard reports it once).
class VentaTablaFija {
public:
    explicit VentaTablaFija(Context& ctx);

    // Window load: printing settings.
    void cargar();

    // ---- Sale (Boton_Procesar) ----
    enum class Resultado { Vendido, Rechazado, Declinado };
    struct Venta {
        Resultado resultado = Resultado::Rechazado;
        BoletoTablaFijaVendido boleto;  // when sold
    };
    // The checks run (nothing locked, nothing written), the summary is shown
    // ("VERIFIQUE LA INFORMACION", Sí/No), and on "Sí" the sale runs with the
    // checks again over the locked rows.
    Venta procesarVenta(const QString& carrera, const QString& caballo, const QString& tablas);
    const std::optional<BoletoTablaFijaVendido>& ultimoBoleto() const { return ultimo_; }
    bool ventaIncierta() const { return incierta_ != nullptr; }

    // ---- Payment ----
    ConsultaCobro buscarBoletoCobro(const QString& codigo);
    const std::optional<ConsultaCobro>& boletoPorCobrar() const { return porCobrar_.consulta(); }
    bool cobrarBoleto();

    // ---- Void (Anulacion_tf) ----
    // Asks the reason, shows the centre's newest fixed-table ticket and voids
    // it on "Sí"; an older ticket is never voided here.
    bool anularUltimo();

    // ---- Figures ----
    TotalesDia Totalizar_Dia();
    bool imprimirResumen(long long desde, long long hasta);
    QVector<CaballoTablaFija> caballos(long long carrera);
    long long carreraDelGrupo() const;
    bool enDolares() const;

private:
    Context& ctx_;
    ImpresoraTaquilla impresora_;
    std::shared_ptr<JugadaTablaFija> incierta_;
    CobroEnEspera porCobrar_;
    std::optional<BoletoTablaFijaVendido> ultimo_;
};

}  // namespace hipico
