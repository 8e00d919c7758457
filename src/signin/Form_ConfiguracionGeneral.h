#pragma once

#include "gui/Formulario.h"
#include "gui/Ventana.h"
#include "signin/ConfiguracionGeneral.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QTabWidget;

namespace hipico {

class Context;

// The general configuration window: the system settings, the group
// parameters (one group or every group of its centre), the purge of kept
// tickets and the close of the day.
class Form_ConfiguracionGeneral : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_ConfiguracionGeneral(Context& ctx, QWidget* parent = nullptr);

    void Guardar_Click();
    void GuardarGrupo_Click();
    void CargarGrupo();
    void Depurar_Click();
    void CierreDia_Click();

private:
    ConfiguracionGeneral logica_;
    FormularioCampos* ajustes_ = nullptr;
    FormularioCampos* grupo_ = nullptr;
    QComboBox* grupos_ = nullptr;
    QCheckBox* copiarCentro_ = nullptr;
    QLineEdit* fechaDepurar_ = nullptr;
};

}  // namespace hipico
