#pragma once

#include "gui/Ventana.h"
#include "subastas/RptSubastaFechas.h"

class QComboBox;
class QDateEdit;
class QLabel;
class QTableWidget;

namespace hipico {

// The auction report by dates: a date range and a group (or subgroup);
// Procesar fills the report table and lists its rows, Imprimir prints them on
// the receipt printer.
class Form_RptSubasta_Fechas : public Ventana<QWidget> {
    Q_OBJECT
public:
    explicit Form_RptSubasta_Fechas(Context& ctx, QWidget* parent = nullptr);
    bool procesar();
    void imprimir();
    void reporte();

private:
    RptSubastaFechas logica_;
    QVector<RptSubastaFechas::Fila> filas_;
    QDateEdit* desde_ = nullptr;
    QDateEdit* hasta_ = nullptr;
    QComboBox* grupo_ = nullptr;
    QComboBox* subgrupo_ = nullptr;
    QTableWidget* tabla_ = nullptr;
    QLabel* totales_ = nullptr;
};

}  // namespace hipico
