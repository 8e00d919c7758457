#pragma once

#include "gui/Ventana.h"
#include "sales/ConfImpresion.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QSpinBox;

namespace hipico {

class Context;

// The print settings window: mode or port, printing "SI"/"NO", font size,
// barcode "SI"/"NO", Save and a test page. A port too long is told as it is
// typed; leaving with changes not saved asks first.
class Form_ConfImpresion : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_ConfImpresion(Context& ctx, QWidget* parent = nullptr);

    void Guardar_Click();
    void Prueba_Click();

protected:
    // Leaving with changes not saved asks first.
    void closeEvent(QCloseEvent* event) override;

private:
    ConfImpresion::Valores valores() const;

    ConfImpresion logica_;
    ConfImpresion::Valores guardados_;
    QLabel* avisoPuerto_ = nullptr;
    QComboBox* puerto_ = nullptr;
    QComboBox* imprimir_ = nullptr;
    QSpinBox* tamLetra_ = nullptr;
    QComboBox* barras_ = nullptr;
};

}  // namespace hipico
