#pragma once

#include "gui/Ventana.h"
#include "signin/CambiarGrupo.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTableView;

namespace hipico {

class Context;
class RecordsetModel;

// The group change window: the groups the session may switch to; Enter (or
// "Cambiar") switches to the chosen one, Esc closes.
class Form_CambiarGrupo : public Ventana<QWidget> {
    Q_OBJECT
public:
    explicit Form_CambiarGrupo(Context& ctx, QWidget* parent = nullptr);

    QTableView* lista() const { return lista_; }
    // Switches to the selected group.
    void cmdCambiar_Click();

private:
    void cargar();
    void mostrarActual();

    CambiarGrupo logica_;
    QLabel* actual_;
    QTableView* lista_;
    RecordsetModel* modelo_;
};

}  // namespace hipico
