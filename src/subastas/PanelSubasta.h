#pragma once

#include "subastas/AdministracionSubasta.h"

#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QTableWidget;

namespace hipico {

class Context;

// The auction cells of an administration window (the winners desk, the
// managers' windows): the chosen race of the chosen centre, one row per horse
// with its tables, buyers, pots and house tables, each edited cell written
// alone; the winner change for an auction whose winner differs from the
// official one; and the group's auction percentages. It acts on the window's
// selection, scope included, as the desk's commands do.
class PanelSubasta : public QWidget {
    Q_OBJECT
public:
    PanelSubasta(Context& ctx, std::function<Seleccion()> seleccion, QWidget* parent = nullptr);

    // Reads the race again for the window's choice.
    void refrescar();

private:
    void celdaCambiada(int fila, int columna);
    void cambiarGanador();
    // Runs work through the error guard under the window's name.
    bool guardado(const std::function<void()>& fn);

    Context& ctx_;
    CeldasSubasta celdas_;
    std::function<Seleccion()> seleccion_;
    Seleccion mostrada_;
    bool cargando_ = false;
    QTableWidget* tabla_ = nullptr;
    QLabel* aviso_ = nullptr;
    QLabel* porcentajes_ = nullptr;
    QLineEdit* ganador_ = nullptr;
};

}  // namespace hipico
