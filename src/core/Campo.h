#pragma once

#include "core/Recordset.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace hipico {

// One editable field of a row, described as data: the column it writes, how
// a window labels it and where it shows it, what a valid value is, and
// whether it must be filled. The configuration window and the master-data
// windows are built from lists of these.
struct Campo {
    enum class Tipo {
        Entero,
        Decimal,
        Texto,
        Fecha,        // shown "DD-MM-YYYY", stored "YYYY-MM-DD"
        Interruptor,  // 1 / 0
        Opcion,       // one of `opciones`, stored as its index
        Lista,        // one of `opciones`, stored as its text
        Clave,        // a password: typed hidden, stored in the configured form
    };
    QString columna;
    QString etiqueta;      // shown beside the field and named in its refusal
    QString pestana;       // the tab that holds it
    Tipo tipo = Tipo::Texto;
    double minimo = 0;     // numbers: the smallest value
    double maximo = 0;     // numbers: the largest value
    int largo = 0;         // texts: the most characters (the column's width)
    QStringList opciones;  // Opcion and Lista: the choices (a Lista's may come from the window at run time)
    bool requerido = false;  // shown in yellow; an empty value is refused before anything else
};

// Builders of the field descriptions.
namespace campo {
Campo interruptor(const char* columna, const char* etiqueta, const QString& pestana);
Campo entero(const char* columna, const char* etiqueta, const QString& pestana, double minimo, double maximo);
Campo decimal(const char* columna, const char* etiqueta, const QString& pestana, double minimo, double maximo);
Campo textoLibre(const char* columna, const char* etiqueta, const QString& pestana, int largo);
Campo opcion(const char* columna, const char* etiqueta, const QString& pestana, QStringList opciones);
Campo fecha(const char* columna, const char* etiqueta, const QString& pestana);
// A list stored as its text; the choices may be left for the window to give.
Campo lista(const char* columna, const char* etiqueta, const QString& pestana, QStringList opciones = {});
Campo clave(const char* columna, const char* etiqueta, const QString& pestana, int largo);
// The same field, to be filled.
Campo requerido(Campo c);
}  // namespace campo

// The tabs of a field list, in the order their first field appears.
QStringList pestanas(const QVector<Campo>& campos);

// The values as a window shows them: column -> text ("YYYY-MM-DD" dates as
// "DD-MM-YYYY", decimals with a comma, switches as "1"/"0", choices as their
// index, list values and texts as stored; passwords are never shown).
using ValoresCampos = QMap<QString, QString>;
ValoresCampos valoresDe(const Row& fila, const QVector<Campo>& campos);

// Checks one value typed for a field; returns the refusal ("" when valid) and
// puts the value to bind into `valor` (a password's typed text as it is).
QString validarCampo(const Campo& campo, const QString& texto, SqlValue& valor);

// Decimal numbers as the windows show them: the shortest text, with a comma.
QString numeroVista(double v);

}  // namespace hipico
