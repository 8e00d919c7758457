#pragma once

#include "gui/Ventana.h"
#include "sales/BoletosTaquilla.h"

#include <QDialog>

class QTableWidget;

namespace hipico {

class Context;
class VentaGanadores;

// The booth's latest tickets of the day, newest first, with their status.
// From the keyboard: the arrows choose a ticket, Enter or F9 prints a copy
// of it, F8 (or Delete) voids it once it has been shown, F5 reads the list
// again, Esc closes it.
class Form_BoletosTaquilla : public Ventana<QDialog> {
    Q_OBJECT
public:
    Form_BoletosTaquilla(Context& ctx, VentaGanadores& venta, QWidget* parent = nullptr);

    QTableWidget* grilla() const { return grilla_; }
    void cargar();
    void copia();
    void anular();

private:
    const BoletoDia* elegido() const;

    VentaGanadores& venta_;
    QVector<BoletoDia> boletos_;
    QTableWidget* grilla_ = nullptr;
};

}  // namespace hipico
