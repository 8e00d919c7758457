#include "sales/CajaCobro.h"

#include "core/Formato.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace hipico {

void CajaCobro::consultado(const ConsultaCobro& c, bool enDolares) {
    boton->setEnabled(c.pagable);
    if (!c.pagable) {
        resultado->clear();
        codigo->setFocus();
        codigo->selectAll();
        return;
    }
    resultado->setText(c.mensaje + QStringLiteral("   ") + formatoMonto(c.monto, enDolares));
    boton->setFocus();
}

QString CajaCobro::texto() const { return codigo->text(); }

void CajaCobro::cobrado(const std::optional<ConsultaCobro>& pedido, bool pagado, bool enDolares) {
    codigo->clear();
    resultado->clear();
    boton->setEnabled(false);
    if (pagado && pedido)
        resultado->setText(
            QStringLiteral("BOLETO %1 PAGADO: %2").arg(pedido->codigo, formatoMonto(pedido->monto, enDolares)));
}

}  // namespace hipico
