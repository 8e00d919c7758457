#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QBoxLayout;
class QComboBox;
class QDateEdit;
class QPushButton;
class QTimer;
class QWidget;

namespace hipico {

class Context;

// The top row of the fixed-table windows: "FECHA", the track when the window
// offers one, "CARRERA" (the settings' race first) and "Actualizar". A
// change of any of them, the button, and a timer every 10 s (the booths'
// sales as they come) call the window's refresh.
struct FilaCarrera {
    QDateEdit* fecha = nullptr;
    QComboBox* hipodromo = nullptr;  // unset when the window has no track
    QComboBox* carrera = nullptr;
    QPushButton* actualizar = nullptr;
    QTimer* reloj = nullptr;
};
struct PedidoFilaCarrera {
    QString nombreFecha;      // the date picker's name
    QString fecha;            // the first date ("YYYY-MM-DD")
    bool conHipodromo = false;
    QStringList hipodromos;   // the tracks offered, and the first one
    QString hipodromo;
};
FilaCarrera filaCarrera(Context& ctx, QWidget* ventana, QBoxLayout* raiz, const PedidoFilaCarrera& pedido,
                        std::function<void()> refrescar);

}  // namespace hipico
