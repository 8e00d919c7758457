#pragma once

#include "gui/Ventana.h"
#include "sales/CuadreTaquillas.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QLabel;
class QTableWidget;

namespace hipico {

class Context;

// Booth summary of winner bets for managers: a date and a group ("TODOS"),
// one row per booth with what it sold, paid and still owes.
class Form_RPT_CuadreTaqWIn : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_RPT_CuadreTaqWIn(Context& ctx, QWidget* parent = nullptr);

    void Buscar_Click();
    QTableWidget* grilla() const { return grilla_; }

private:
    void mostrar(const QVector<CuadreTaquillas::Fila>& filas);

    CuadreTaquillas logica_;
    QDateEdit* fecha_ = nullptr;
    QComboBox* grupo_ = nullptr;
    QTableWidget* grilla_ = nullptr;
    QLabel* total_ = nullptr;
};

}  // namespace hipico
