#pragma once

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
};

}  // namespace hipico
