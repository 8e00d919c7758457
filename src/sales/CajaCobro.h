#pragma once

#include "core/Guardia.h"
#include "sales/Flujos.h"

#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace hipico {

// The payment box of a booth window: the code box, the "COBRAR" button and
// the outcome line, as every game's booth shows them.
struct CajaCobro {
    QLineEdit* codigo = nullptr;
    QPushButton* boton = nullptr;
    QLabel* resultado = nullptr;

    // After the lookup: a payable ticket's text with the button ready; else
    // the code stays for a look, selected for the next one.
    void consultado(const ConsultaCobro& c, bool enDolares);
    // After the payment: the box emptied and, when paid, what was paid.
    void cobrado(const std::optional<ConsultaCobro>& pedido, bool pagado, bool enDolares);

    // The box's two commands on a booth's sale logic, whatever its game (its
    // lookup, the ticket it keeps for payment, the payment), each through the
    // error guard under the window's name: the lookup of the typed code, and
    // the payment of the ticket found (true when paid).
    template <class Logica>
    void consultar(Context& ctx, const QString& ventana, Logica& logica) {
        consultado(intentar(ctx, ventana, [&] { return ConsultaCobro(logica.buscarBoletoCobro(texto())); })
                       .value_or(ConsultaCobro()),
                   logica.enDolares());
    }
    template <class Logica>
    bool cobrar(Context& ctx, const QString& ventana, Logica& logica) {
        const std::optional<ConsultaCobro> pedido = logica.boletoPorCobrar();
        const bool pagado = proteger(ctx, ventana, [&] { return logica.cobrarBoleto(); });
        cobrado(pedido, pagado, logica.enDolares());
        return pagado;
    }

private:
    QString texto() const;
};

}  // namespace hipico
