#pragma once

#include "core/InputFilters.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QShortcut>
#include <QWidget>
#include <initializer_list>

namespace hipico {

// Keyboard helpers of the race screens.

// Enter in a field takes the focus to the given field.
inline void enterVaA(QWidget* campo, QWidget* siguiente) {
    EnterMovesOn::install(campo, [siguiente] {
        siguiente->setFocus(Qt::TabFocusReason);
        return true;
    });
}

// Enter on a button presses it (Space already does).
inline void enterPulsa(QAbstractButton* boton) {
    EnterMovesOn::install(boton, [boton] {
        boton->click();
        return true;
    });
}

// Tab (and Enter where it moves on by itself) follows the fields in this order.
inline void ordenTabulacion(std::initializer_list<QWidget*> campos) {
    QWidget* anterior = nullptr;
    for (QWidget* w : campos) {
        if (anterior) QWidget::setTabOrder(anterior, w);
        anterior = w;
    }
}

// Esc closes the window.
inline void escCierra(QWidget* ventana) {
    auto* esc = new QShortcut(QKeySequence(Qt::Key_Escape), ventana);
    esc->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(esc, &QShortcut::activated, ventana, &QWidget::close);
}

}  // namespace hipico
