#pragma once

#include "core/Recordset.h"
#include "reportes/Plantilla.h"

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QVector>

class QPainter;
class QPagedPaintDevice;

namespace hipico {

// A report laid out on pages: a template drawn against the rows of its
// table. Every page carries the heading (company, title, the heading lines
// and parameters, the print date and time), the column titles, its lines
// (group headings, rows, group totals, the grand total) and "Página N de M";
// the chart goes beside the table on the first page or under the totals.
// Pages are measured in points (1/72 inch) on letter-size paper; painting a
// page costs only that page, so the first page of a long list shows at once.
class Documento {
public:
    struct Cabecera {
        QString titulo;   // the template's title, else the kind's caption
        QString empresa;  // the company (configuracion.empresa)
        QString impreso;  // "23-11-2026 10:30:00"
    };

    // One line of the report, in reading order.
    struct Linea {
        enum class Tipo { Grupo, Detalle, PieGrupo, TotalGeneral, Grafico };
        Tipo tipo = Tipo::Detalle;
        int fila = -1;             // the row (Detalle), or the group's first row
        int nivel = 0;             // the group's depth
        QString texto;             // heading or total label
        QVector<double> totales;   // per column (PieGrupo, TotalGeneral)
        double alto = 0;
    };

    // The bars of the chart: one group per category, one bar per series.
    struct Barras {
        QString titulo;
        QStringList categorias;
        QStringList series;              // titles
        QVector<QVector<double>> valores;  // [categoria][serie]
    };

    Documento(Plantilla plantilla, Recordset filas, Cabecera cabecera, bool enDolares);

    const Plantilla& plantilla() const { return plantilla_; }
    const Recordset& filas() const { return filas_; }
    const Cabecera& cabecera() const { return cabecera_; }
    const QVector<Linea>& lineas() const { return lineas_; }
    // The heading lines under the title, fields and parameters put in.
    const QStringList& encabezado() const { return encabezado_; }
    const Barras& barras() const { return barras_; }
    bool enDolares() const { return enDolares_; }

    int paginas() const { return static_cast<int>(paginas_.size()); }
    QSizeF tamano() const;          // the page, in points
    QPageLayout diseno() const;     // letter paper, the template's orientation, no margins

    // Paints page `pagina` (0-based) on a painter whose unit is the point.
    void pintar(QPainter& p, int pagina) const;
    // Every page on a paged device (a printer, a PDF writer) whose page
    // layout is already set; `dpi` is its resolution.
    void pintarTodo(QPagedPaintDevice& dispositivo, int dpi) const;

    // A cell as the report shows it, and a total of a column.
    QString celda(int fila, int columna) const;
    QString total(const Linea& linea, int columna) const;
    // The text of a heading / total label: {campo} from the row, {ParametroN} from the parameters.
    QString sustituir(const QString& texto, int fila) const;

private:
    void maquetar();
    void calcularBarras();
    void pintarEncabezado(QPainter& p, int pagina) const;
    void pintarLinea(QPainter& p, const Linea& l, double y, bool par) const;
    void pintarGrafico(QPainter& p, const QRectF& area) const;
    // One line of text in a cell, to its left or right edge, cut to the
    // cell's width, its middle on the cell's middle.
    void escribir(QPainter& p, bool negrita, const QRectF& celda, bool derecha, const QString& texto) const;

    // A text shaped once and drawn as glyphs from then on: the cells of a
    // long list repeat few texts (statuses, amounts, booths).
    struct Corrida {
        QList<QGlyphRun> glifos;
        double ancho = 0, ascenso = 0;
    };
    const Corrida& corrida(bool negrita, const QString& texto) const;
    mutable QHash<QString, Corrida> corridas_[2];

    Plantilla plantilla_;
    Recordset filas_;
    QVector<int> indices_;  // each column's field in the rows
    Cabecera cabecera_;
    bool enDolares_;
    QStringList encabezado_;
    QVector<Linea> lineas_;
    QVector<QVector<int>> paginas_;  // lines of each page
    QVector<double> x_;              // left edge of each column, and the table's right edge
    Barras barras_;
    QFont cuerpo_, negrita_, titulo_, empresa_, pequena_;
    QFontMetricsF medidaCuerpo_{QFont()}, medidaNegrita_{QFont()};
    double fila_ = 12;
    double cabezaAlto_ = 0;          // heading up to the column titles
};

}  // namespace hipico
