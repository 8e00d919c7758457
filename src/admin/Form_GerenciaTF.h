#pragma once

#include "admin/GerenciaTablaFija.h"
#include "gui/Ventana.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QTableWidget;
class QTimer;

namespace hipico {

// The fixed-table manager's window: the group's sales per horse of a race
// (refreshed by a timer), the day's totals, the booth message, and the ticket
// search with its totals and its printing.
class Form_GerenciaTF : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_GerenciaTF(Context& ctx, QWidget* parent = nullptr);
    GerenciaTablaFija& logica() { return logica_; }
    void actualizar();
    void buscar();

private:
    GerenciaTablaFija::Filtro filtro() const;

    GerenciaTablaFija logica_;
    QDateEdit* fecha_ = nullptr;
    QComboBox* carrera_ = nullptr;
    QTableWidget* caballos_ = nullptr;
    QLabel* totales_ = nullptr;
    QLineEdit* mensaje_ = nullptr;
    QComboBox* clase_ = nullptr;
    QLineEdit* caballo_ = nullptr;
    QCheckBox* historico_ = nullptr;
    QTableWidget* boletos_ = nullptr;
    QLabel* sumas_ = nullptr;
    QTimer* reloj_ = nullptr;
};

}  // namespace hipico
