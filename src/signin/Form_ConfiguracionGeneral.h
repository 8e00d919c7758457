#pragma once

#include "gui/Ventana.h"
#include "signin/ConfiguracionGeneral.h"

#include <QMap>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QTabWidget;

namespace hipico {

class Context;

// The fields of a list of settings, laid out in one tab per group of
// fields: a switch is a check box, a choice a list, anything else a box.
class FormularioAjustes {
public:
    // Adds one tab per tab name of the fields to `pestanas`.
    FormularioAjustes(const QVector<CampoAjuste>& campos, QTabWidget* pestanas);
    void poner(const ValoresAjuste& valores);
    ValoresAjuste valores() const;
    QWidget* primero() const { return primero_; }
    QWidget* campo(const QString& columna) const { return campos_.value(columna); }

private:
    QVector<CampoAjuste> lista_;
    QMap<QString, QWidget*> campos_;
    QWidget* primero_ = nullptr;
};

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
    FormularioAjustes* ajustes_ = nullptr;
    FormularioAjustes* grupo_ = nullptr;
    QComboBox* grupos_ = nullptr;
    QCheckBox* copiarCentro_ = nullptr;
    QLineEdit* fechaDepurar_ = nullptr;
};

}  // namespace hipico
