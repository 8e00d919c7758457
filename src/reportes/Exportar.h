#pragma once

#include <QImage>
#include <QString>

class QPrinter;

namespace hipico {

class Documento;

// What a laid-out report can become. Each export returns false when the
// file cannot be written.

// Every page on the printer, at the printer's resolution.
void imprimirDocumento(const Documento& documento, QPrinter& impresora);
// A PDF file, every page.
bool exportarPdf(const Documento& documento, const QString& archivo);
// One page as a picture (pagina from 0).
QImage imagenPagina(const Documento& documento, int pagina, int dpi = 110);
// A CSV file (UTF-8, "," between fields, "." before decimals): the column
// titles, then one line per row; amounts as plain numbers, dates and
// statuses as the report shows them.
bool exportarCsv(const Documento& documento, const QString& archivo);
// A spreadsheet (.xlsx): the heading, the column titles, the rows with their
// group headings and totals, amounts as numbers with the report's format.
bool exportarXlsx(const Documento& documento, const QString& archivo);

}  // namespace hipico
