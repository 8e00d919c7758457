#pragma once

#include "gui/Ventana.h"
#include "sales/ConfImpresion.h"

#include <QWidget>

class QComboBox;
class QSpinBox;

namespace hipico {

class Context;

// The print settings window: mode or port, printing "SI"/"NO", font size,
// barcode "SI"/"NO", Save and a test page.
class Form_ConfImpresion : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_ConfImpresion(Context& ctx, QWidget* parent = nullptr);

    void Guardar_Click();
    void Prueba_Click();

private:
    ConfImpresion::Valores valores() const;

    ConfImpresion logica_;
    QComboBox* puerto_ = nullptr;
    QComboBox* imprimir_ = nullptr;
    QSpinBox* tamLetra_ = nullptr;
    QComboBox* barras_ = nullptr;
};

}  // namespace hipico
