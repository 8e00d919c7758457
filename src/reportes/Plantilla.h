#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <optional>
#include <stdexcept>

namespace hipico {

// A template that cannot be used: missing, not readable or not well formed.
// Its text is the Spanish message the user sees, naming the file.
class ErrorPlantilla : public std::runtime_error {
public:
    explicit ErrorPlantilla(const QString& mensaje) : std::runtime_error(mensaje.toStdString()) {}
    QString texto() const { return QString::fromStdString(what()); }
};

// The title of the message that tells a template's fault.
inline const QString kTituloPlantilla = QStringLiteral("PLANTILLA DEL REPORTE");

// A report template: which local report table it reads and in which order,
// how its rows are grouped and totalled, the columns with their titles and
// formats, the heading lines, the parameters it takes, the page's
// orientation and an optional bar chart. One file per template, written in
// XML (see Reportes/LEAME.md); one renderer draws every template.
struct Plantilla {
    enum class Total { Ninguno, Suma, Cuenta };
    struct Columna {
        QString campo;
        QString titulo;
        QString formato;  // "" text, "monto", "currency", "$#,##0.00", "#,##0.00", "#,##0", "0", "DD-MM-YYYY", "estatus"
        double ancho = 1;  // share of the table's width
        Total total = Total::Ninguno;
    };
    struct Grupo {
        QString campo;
        QString titulo;  // heading of each group, with {campo} fields
        QString pie;     // label of its totals line ("" : no totals line)
    };
    struct Parametro {
        QString nombre;    // "Parametro1", "Parametro2"...
        bool entero = false;
        QString etiqueta;  // shown under the title as "ETIQUETA: valor" ("" : not shown)
        QVariant valor;    // its current value (the default until handed over)
    };
    struct Grafico {
        QString titulo;
        QString categoria;     // one bar group per value of this field
        QStringList series;    // the amounts summed into the bars
        bool derecha = true;   // beside the table on the first page, else under the totals
        double ancho = 35;     // percent of the page's width when beside the table
    };

    QString archivo;             // the file it came from
    QString titulo;              // "" : the caption of the report's kind
    QString tabla;               // rpt_ table
    QStringList orden;           // "campo" or "campo desc"
    bool horizontal = false;
    int letra = 8;               // size of the body's letters, in points
    QVector<Parametro> parametros;
    QStringList lineas;          // heading lines under the title, with {campo} and {Parametro1}
    QVector<Grupo> grupos;       // outermost first
    QVector<Columna> columnas;
    QString totalGeneral;        // label of the grand total line ("" : none)
    std::optional<Grafico> grafico;

    // Every field the template names: columns, order, groups, chart, placeholders.
    QStringList camposUsados() const;
};

// Reads a template file. Throws ErrorPlantilla naming the file when it is
// missing or malformed.
Plantilla leerPlantilla(const QString& archivo);

// Hands the report's two values to the template's parameter fields, walked in
// the template's order: the field named "Parametro1" takes the text, the one
// named "Parametro2" the whole number; other fields keep their value.
void entregarParametros(Plantilla& plantilla, const QString& parametro1, qint32 parametro2);

// The fields named between braces in a text ("{ch}" and "{fecha:DD-MM-YYYY}"
// give "ch" and "fecha"); marcaCampo() finds each mark, its field in the
// first capture and its format (optional) in the second.
QStringList camposDeTexto(const QString& texto);
const QRegularExpression& marcaCampo();

}  // namespace hipico
