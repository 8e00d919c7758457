#pragma once

#include "gui/Ventana.h"
#include "subastas/AdministracionSubasta.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace hipico {

class Context;

// The auction administration: the winner of an auctioned race of the
// working day for one centre or "TODOS", and the house amounts it gives.
class Form_Admin_Remate : public Ventana<QWidget> {
    Q_OBJECT
public:
    explicit Form_Admin_Remate(Context& ctx, QWidget* parent = nullptr);
    void procesar();

private:
    AdminRemate logica_;
    QLabel* fecha_ = nullptr;
    QLineEdit* carrera_ = nullptr;
    QLineEdit* caballo_ = nullptr;
    QComboBox* centro_ = nullptr;
    QLabel* resultado_ = nullptr;
};

}  // namespace hipico
