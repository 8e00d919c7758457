#pragma once

#include "core/Campo.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVector>

class QTabWidget;
class QWidget;

namespace hipico {

// The widgets of a list of described fields, one tab per tab name: a switch
// is a check box, a choice or a list a drop-down list, a password a hidden
// box, anything else a text box. Fields to be filled carry the style
// sheet's property requerido (yellow). Owned by the tab widget it fills.
class FormularioCampos : public QObject {
    Q_OBJECT
public:
    // Adds one tab per tab name of the fields to `pestanas`, the fields of a
    // tab in `columnas` columns.
    FormularioCampos(const QVector<Campo>& campos, QTabWidget* pestanas, int columnas = 1);

    void poner(const ValoresCampos& valores);
    ValoresCampos valores() const;
    // Empties every field (a list goes to its first choice).
    void limpiar();
    // The choices of a list field; the value it shows stays shown.
    void ponerOpciones(const QString& columna, const QStringList& opciones);
    // Locks (or unlocks) every field but those named.
    void bloquear(bool bloqueado, const QStringList& salvo = {});
    void bloquearCampo(const QString& columna, bool bloqueado);

    QWidget* primero() const { return primero_; }
    QWidget* campo(const QString& columna) const { return campos_.value(columna); }
    const QVector<Campo>& lista() const { return lista_; }

private:
    QVector<Campo> lista_;
    QMap<QString, QWidget*> campos_;
    QWidget* primero_ = nullptr;
};

}  // namespace hipico
