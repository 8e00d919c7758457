#pragma once

#include "gui/Ventana.h"

#include <QWidget>

class QGridLayout;
class QLabel;
class QTimer;

namespace hipico {

class Context;

// The fixed-table display screen for the customers, readable across a room:
// the race's horses with their table price, the prize of one table and
// whether the race sells. Form_Pant_TF shows the current race in large type;
// Form_Pant_TF2 shows the current race and the two after it side by side.
// The setting tipo_pantalla chooses (2: Form_Pant_TF2). It reads the card
// every few seconds and redraws only when something changed.
class Form_Pant_TF : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Pant_TF(Context& ctx, int carreras, QWidget* parent = nullptr);
    // The screen the setting asks for.
    static QWidget* crear(Context& ctx, QWidget* parent);
    void refrescar();
    // What the screen shows now, one line per race and horse (for the tests).
    QString contenido() const { return firma_; }

private:
    int carreras_;
    QString firma_;
    QGridLayout* rejilla_ = nullptr;
    QLabel* premio_ = nullptr;
    QTimer* reloj_ = nullptr;
};

}  // namespace hipico
