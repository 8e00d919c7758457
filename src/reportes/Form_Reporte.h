#pragma once

#include "gui/Ventana.h"
#include "reportes/VentanasReporte.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;

namespace hipico {

// Every report window of the program: the inputs its description asks for
// (one day or a date range, a race range, the scope, an option), "Reporte"
// that refills its table and opens the report, and for the general reports
// "Exportar Txt". The window keeps its description's name.
class Form_Reporte : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Reporte(Context& ctx, const DescripcionReporte& descripcion, QWidget* parent = nullptr);

    // What the inputs say now.
    Peticion peticion() const;
    // "Reporte": the report window opened (nullptr when nothing opened).
    QWidget* Reporte_Click();
    // "Exportar Txt" into the file (asked with the text files' filter when "").
    bool ExportarTxt_Click(const QString& archivo = {});

private:
    GeneradorReporte generador_;
    QVector<Alcance> alcances_;
    QDateEdit *desde_ = nullptr, *hasta_ = nullptr;             // the day, or the range
    QLineEdit *carreraDesde_ = nullptr, *carreraHasta_ = nullptr;  // the race range
    QComboBox* alcance_ = nullptr;
    QCheckBox* opcion_ = nullptr;
};

}  // namespace hipico
