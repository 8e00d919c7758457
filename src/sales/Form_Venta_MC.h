#pragma once

#include "gui/Ventana.h"
#include "sales/VentaMacuare.h"

#include <QVector>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace hipico {

class Context;

// The Macuare sale window. From the keyboard: the seven leg boxes, the
// amount, the veces and the buyer's name, Enter moving on from each and
// selling on the name; F5 goes to the payment box (Enter looks the ticket
// up, Enter on "COBRAR" pays it), F6 to the void box (Enter voids the code
// typed), F7 prints the day's summary, F8 lists the booth's tickets of the
// day, F9 prints a copy of the last ticket; Esc clears what is being typed,
// Ctrl+F4 closes. After each sale and each refusal the cursor is where the
// next key belongs.
class Form_Venta_MC : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Venta_MC(Context& ctx, QWidget* parent = nullptr);
    VentaMacuare& logica() { return logica_; }

    // Handlers, also reachable by the tests.
    void Boton_Agregar_Click();
    void Text_boletoCobro_Enter();
    void Boton_Cobrar_Boleto2_Click();
    void Text_nu_ba_Enter();
    void Command19_Click();
    void Bton_ImprimirRV_Click();
    void Totalizar_Dia();
    void LIMPIAR();

    QLineEdit* pierna(int i) const { return piernas_[i]; }

protected:
    void teclaEscape() override { LIMPIAR(); }
    void keyPressEvent(QKeyEvent* event) override;

private:
    void mostrarEstado();

    VentaMacuare logica_;
    QVector<QLineEdit*> piernas_;
    QVector<QLabel*> carreras_;
    QLineEdit* monto_ = nullptr;
    QLineEdit* veces_ = nullptr;
    QLineEdit* nombre_ = nullptr;
    QLineEdit* cobro_ = nullptr;
    QLineEdit* anular_ = nullptr;
    QPushButton* cobrar_ = nullptr;
    QLabel* estado_ = nullptr;
    QLabel* resultadoCobro_ = nullptr;
    QLabel* ultimo_ = nullptr;
    QLabel* totales_ = nullptr;
    QTableWidget* lista_ = nullptr;
    long long combinaciones_ = 0;
};

}  // namespace hipico
