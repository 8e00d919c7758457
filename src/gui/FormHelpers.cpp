#include "gui/FormHelpers.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace hipico {

void CentrarForm(QWidget* form) {
    QScreen* screen = form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const int ancho = screen->geometry().width();
    form->move((ancho / 2) - (form->width() / 2), form->y());
}

void MantenerDentro(QWidget* hijo, const QWidget* padre) {
    if (!hijo || !padre) return;
    const int maxX = std::max(0, padre->width() - hijo->width());
    const int maxY = std::max(0, padre->height() - hijo->height());
    hijo->move(std::clamp(hijo->x(), 0, maxX), std::clamp(hijo->y(), 0, maxY));
}

}  // namespace hipico
