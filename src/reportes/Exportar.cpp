#include "reportes/Exportar.h"

#include "reportes/Documento.h"
#include "reportes/Formatos.h"

#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QTextStream>
#include <cmath>
#include <xlsxwriter.h>

namespace hipico {

void imprimirDocumento(const Documento& documento, QPrinter& impresora) {
    impresora.setFullPage(true);
    impresora.setPageLayout(documento.diseno());
    documento.pintarTodo(impresora, impresora.resolution());
}

bool exportarPdf(const Documento& documento, const QString& archivo) {
    {
        QFile prueba(archivo);
        if (!prueba.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    }
    QPdfWriter pdf(archivo);
    constexpr int kDpi = 600;
    pdf.setResolution(kDpi);
    pdf.setPageLayout(documento.diseno());
    pdf.setTitle(documento.cabecera().titulo);
    pdf.setCreator(QStringLiteral("hipico"));
    documento.pintarTodo(pdf, kDpi);
    return QFile(archivo).size() > 0;
}

QImage imagenPagina(const Documento& documento, int pagina, int dpi) {
    const QSizeF puntos = documento.tamano();
    QImage imagen(qRound(puntos.width() * dpi / 72.0), qRound(puntos.height() * dpi / 72.0), QImage::Format_RGB32);
    imagen.setDotsPerMeterX(qRound(dpi / 0.0254));
    imagen.setDotsPerMeterY(qRound(dpi / 0.0254));
    imagen.fill(Qt::white);
    QPainter p(&imagen);
    p.scale(dpi / 72.0, dpi / 72.0);
    documento.pintar(p, pagina);
    return imagen;
}

namespace {

// The value of a cell for a data file: amounts as numbers, the rest as shown.
QString valorPlano(const Documento& d, int fila, int columna) {
    const Plantilla::Columna& c = d.plantilla().columnas[columna];
    if (!formatoNumerico(c.formato)) return d.celda(fila, columna);
    const double v = Row::toNumber(d.filas()[fila].value(c.campo));
    return formatoMonetario(c.formato) ? QString::number(v, 'f', 2) : QString::number(std::llround(v));
}

QString campoCsv(QString texto) {
    if (texto.contains(QLatin1Char(',')) || texto.contains(QLatin1Char('"')) || texto.contains(QLatin1Char('\n'))) {
        texto.replace(QLatin1String("\""), QLatin1String("\"\""));
        return QLatin1Char('"') + texto + QLatin1Char('"');
    }
    return texto;
}

}  // namespace

bool exportarCsv(const Documento& documento, const QString& archivo) {
    QFile f(archivo);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    QTextStream out(&f);
    out.setEncoding(QStringConverter::Utf8);
    out.setGenerateByteOrderMark(true);
    const auto& columnas = documento.plantilla().columnas;
    QStringList titulos;
    for (const Plantilla::Columna& c : columnas) titulos << campoCsv(c.titulo.trimmed());
    out << titulos.join(QLatin1Char(',')) << "\r\n";
    for (int r = 0; r < documento.filas().size(); ++r) {
        QStringList campos;
        for (int c = 0; c < columnas.size(); ++c) campos << campoCsv(valorPlano(documento, r, c));
        out << campos.join(QLatin1Char(',')) << "\r\n";
    }
    out.flush();
    return f.error() == QFile::NoError;
}

namespace {

// The spreadsheet's number format of a column's format.
QByteArray formatoHoja(const QString& formato, bool enDolares) {
    if (formato == QLatin1String("monto")) return enDolares ? "$#,##0.00" : "\"Bs.\" #,##0.00";
    if (formato == QLatin1String("currency")) return "\"Bs.\" #,##0.00";
    if (formato == QLatin1String("$#,##0.00")) return "$#,##0.00";
    if (formato == QLatin1String("#,##0.00")) return "#,##0.00";
    if (formato == QLatin1String("#,##0")) return "#,##0";
    return "0";
}

}  // namespace

bool exportarXlsx(const Documento& documento, const QString& archivo) {
    lxw_workbook_options opciones{};
    opciones.constant_memory = LXW_TRUE;  // rows go straight to disk: a long list stays small
    const QByteArray nombre = QFile::encodeName(archivo);
    lxw_workbook* libro = workbook_new_opt(nombre.constData(), &opciones);
    if (!libro) return false;
    lxw_worksheet* hoja = workbook_add_worksheet(libro, "Reporte");
    const auto& columnas = documento.plantilla().columnas;
    const int n = static_cast<int>(columnas.size());
    const bool dolares = documento.enDolares();

    lxw_format* titulo = workbook_add_format(libro);
    format_set_bold(titulo);
    format_set_font_size(titulo, 14);
    lxw_format* negrita = workbook_add_format(libro);
    format_set_bold(negrita);
    lxw_format* cabeza = workbook_add_format(libro);
    format_set_bold(cabeza);
    format_set_bg_color(cabeza, 0xE1E5EC);
    format_set_bottom(cabeza, LXW_BORDER_THIN);
    QVector<lxw_format*> numeros, totales;
    for (const Plantilla::Columna& c : columnas) {
        const QByteArray f = formatoHoja(c.formato, dolares);
        lxw_format* fn = workbook_add_format(libro);
        format_set_num_format(fn, f.constData());
        lxw_format* ft = workbook_add_format(libro);
        format_set_num_format(ft, f.constData());
        format_set_bold(ft);
        format_set_top(ft, LXW_BORDER_THIN);
        numeros << fn;
        totales << ft;
    }
    for (int c = 0; c < n; ++c) worksheet_set_column(hoja, c, c, 9 * columnas[c].ancho + 4, nullptr);

    lxw_row_t fila = 0;
    const auto texto = [&](lxw_col_t col, const QString& t, lxw_format* f) {
        worksheet_write_string(hoja, fila, col, t.toUtf8().constData(), f);
    };
    texto(0, documento.cabecera().titulo, titulo);
    ++fila;
    texto(0, documento.cabecera().empresa, negrita);
    ++fila;
    for (const QString& l : documento.encabezado()) {
        texto(0, l, nullptr);
        ++fila;
    }
    texto(0, QStringLiteral("Impreso: ") + documento.cabecera().impreso, nullptr);
    fila += 2;
    for (int c = 0; c < n; ++c) texto(c, columnas[c].titulo.trimmed(), cabeza);
    ++fila;
    for (const Documento::Linea& l : documento.lineas()) {
        switch (l.tipo) {
        case Documento::Linea::Tipo::Grupo:
            texto(0, l.texto, negrita);
            break;
        case Documento::Linea::Tipo::Detalle:
            for (int c = 0; c < n; ++c) {
                if (formatoNumerico(columnas[c].formato))
                    worksheet_write_number(hoja, fila, c, Row::toNumber(documento.filas()[l.fila].value(columnas[c].campo)),
                                           numeros[c]);
                else
                    texto(c, documento.celda(l.fila, c), nullptr);
            }
            break;
        case Documento::Linea::Tipo::PieGrupo:
        case Documento::Linea::Tipo::TotalGeneral:
            if (columnas[0].total == Plantilla::Total::Ninguno) texto(0, l.texto, negrita);
            for (int c = 0; c < n; ++c)
                if (columnas[c].total != Plantilla::Total::Ninguno)
                    worksheet_write_number(hoja, fila, c, l.totales[c], totales[c]);
            break;
        case Documento::Linea::Tipo::Grafico:
            continue;
        }
        ++fila;
    }
    return workbook_close(libro) == LXW_NO_ERROR;
}

}  // namespace hipico
