#include "sales/TicketPrinter.h"

#include "core/Cipher.h"
#include "sales/Barcode.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>

#include <algorithm>
#include <cmath>

namespace hipico {

namespace {

QString& archivoPdf() {
    static QString archivo;
    return archivo;
}

// Geometry of the graphic piece, in millimetres.
constexpr double kAnchoPapelMm = 80.0;
constexpr double kMargenMm = 4.0;
constexpr double kModuloMm = 0.25;     // narrowest bar: two dots of a 203 dpi receipt printer
constexpr double kAltoBarrasMm = 12.0;
constexpr double kSeparacionMm = 3.0;  // between the text and the barcode, and below it

double mm(double milimetros, double dpi) { return milimetros * dpi / 25.4; }

// The narrowest bar in whole dots of the device: never a fraction of a dot,
// which a receipt printer cannot draw.
double moduloEnPuntos(double dpi) { return std::max(1.0, std::round(mm(kModuloMm, dpi))); }

QFont fuente(int tamLetra) {
    QFont f(QStringLiteral("MS Sans Serif"));
    f.setStyleHint(QFont::SansSerif);
    f.setPointSizeF(tamLetra > 0 ? tamLetra : 8);
    return f;
}

bool conBarras(const Impreso& impreso, bool codigoBarras) {
    return codigoBarras && !impreso.codigoBarras.isEmpty() && !patronCode128(impreso.codigoBarras).isEmpty();
}

}  // namespace

ModoImpresora modoImpresora(const QString& puerto) {
    if (puerto == kPuertoCompartida) return ModoImpresora::Compartida;
    if (puerto == kPuertoGrafica) return ModoImpresora::Grafica;
    return ModoImpresora::Puerto;
}

QByteArray bytesCrudos(const QStringList& lineas) {
    QByteArray out;
    for (const QString& linea : lineas) {
        for (const QChar c : linea) out.append(static_cast<char>(codigoAnsi(c)));
        out.append("\r\n");
    }
    out.append('\x1b');
    out.append('d');
    out.append(static_cast<char>(kLineasAvance));
    return out;
}

void ImpresoraPuerto::imprimir(const Impreso& impreso) {
    QFile puerto(puerto_);
    if (!puerto.open(QIODevice::WriteOnly | QIODevice::Append))
        throw ErrorImpresion(QStringLiteral("NO SE PUEDE ESCRIBIR EN EL PUERTO ") + puerto_ + QStringLiteral(": ") +
                             puerto.errorString());
    const QByteArray datos = bytesCrudos(impreso.lineas);
    if (puerto.write(datos) != datos.size() || !puerto.flush())
        throw ErrorImpresion(QStringLiteral("NO SE PUDO ESCRIBIR EN EL PUERTO ") + puerto_);
}

void ImpresoraCompartida::imprimir(const Impreso& impreso) {
    QProcess lp;
    lp.start(QStringLiteral("lp"), {QStringLiteral("-d"), cola_, QStringLiteral("-o"), QStringLiteral("raw")});
    if (!lp.waitForStarted(5000))
        throw ErrorImpresion(QStringLiteral("NO SE ENCUENTRA EL SISTEMA DE IMPRESION (lp)"));
    lp.write(bytesCrudos(impreso.lineas));
    lp.closeWriteChannel();
    if (!lp.waitForFinished(15000) || lp.exitStatus() != QProcess::NormalExit || lp.exitCode() != 0) {
        const QString detalle = QString::fromLocal8Bit(lp.readAllStandardError()).trimmed();
        throw ErrorImpresion(QStringLiteral("LA IMPRESORA COMPARTIDA ") + cola_ +
                             QStringLiteral(" NO ACEPTO EL TRABAJO") +
                             (detalle.isEmpty() ? QString() : QStringLiteral(": ") + detalle));
    }
}

void fijarSalidaPdf(const QString& archivo) { archivoPdf() = archivo; }
QString salidaPdf() { return archivoPdf(); }

void ImpresoraGrafica::imprimir(const Impreso& impreso) {
    QPrinter printer(QPrinter::HighResolution);
    if (!archivoPdf().isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(archivoPdf());
    } else if (QPrinterInfo::defaultPrinter().isNull()) {
        throw ErrorImpresion(QStringLiteral("NO HAY UNA IMPRESORA PREDETERMINADA EN ESTE EQUIPO"));
    }
    const double dpi = printer.resolution();
    const double altoMm = altoImpreso(impreso, tamLetra_, barras_, dpi) * 25.4 / dpi + kMargenMm;
    printer.setPageSize(QPageSize(QSizeF(kAnchoPapelMm, altoMm), QPageSize::Millimeter, QString(),
                                  QPageSize::ExactMatch));
    printer.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
    printer.setDocName(QStringLiteral("hipico"));
    QPainter p;
    if (!p.begin(&printer)) throw ErrorImpresion(QStringLiteral("NO SE PUDO ABRIR LA IMPRESORA"));
    pintarImpreso(p, impreso, tamLetra_, barras_, printer.resolution());
    if (!p.end()) throw ErrorImpresion(QStringLiteral("LA IMPRESORA NO TERMINO EL TRABAJO"));
}

std::unique_ptr<TicketPrinter> crearImpresora(const ConfLocal& conf) {
    switch (modoImpresora(conf.puerto)) {
    case ModoImpresora::Compartida: return std::make_unique<ImpresoraCompartida>();
    case ModoImpresora::Grafica: return std::make_unique<ImpresoraGrafica>(conf.tamletra, conf.codbarras == 1);
    case ModoImpresora::Puerto: break;
    }
    return std::make_unique<ImpresoraPuerto>(conf.puerto);
}

double altoImpreso(const Impreso& impreso, int tamLetra, bool codigoBarras, double dpi) {
    QImage medida(1, 1, QImage::Format_RGB32);
    medida.setDotsPerMeterX(qRound(dpi / 0.0254));
    medida.setDotsPerMeterY(qRound(dpi / 0.0254));
    const QFontMetricsF fm(fuente(tamLetra), &medida);
    double alto = mm(kMargenMm, dpi) + fm.lineSpacing() * impreso.lineas.size();
    if (conBarras(impreso, codigoBarras)) alto += mm(kSeparacionMm * 2 + kAltoBarrasMm, dpi);
    return alto;
}

void pintarImpreso(QPainter& p, const Impreso& impreso, int tamLetra, bool codigoBarras, double dpi) {
    p.save();
    p.setFont(fuente(tamLetra));
    p.setPen(Qt::black);
    const QFontMetricsF fm(p.font(), p.device());
    const double izquierda = mm(kMargenMm, dpi);
    double y = mm(kMargenMm, dpi);
    for (const QString& linea : impreso.lineas) {
        p.drawText(QPointF(izquierda, y + fm.ascent()), linea);
        y += fm.lineSpacing();
    }
    if (conBarras(impreso, codigoBarras)) {
        y += mm(kSeparacionMm, dpi);
        p.setRenderHint(QPainter::Antialiasing, false);
        // Whole dots, and at least the quiet zone clear on the left.
        const double modulo = moduloEnPuntos(dpi);
        const double x = std::round(std::max(izquierda, kZonaSilenciosaModulos * modulo));
        dibujarCodigoBarras(p, impreso.codigoBarras, QStringLiteral("128"), x, std::round(y), modulo,
                            std::round(mm(kAltoBarrasMm, dpi)));
    }
    p.restore();
}

QImage imagenImpreso(const Impreso& impreso, int tamLetra, bool codigoBarras, int dpi) {
    const int ancho = qRound(mm(kAnchoPapelMm, dpi));
    const int alto = qRound(altoImpreso(impreso, tamLetra, codigoBarras, dpi) + mm(kMargenMm, dpi));
    QImage imagen(ancho, alto, QImage::Format_RGB32);
    imagen.setDotsPerMeterX(qRound(dpi / 0.0254));
    imagen.setDotsPerMeterY(qRound(dpi / 0.0254));
    imagen.fill(Qt::white);
    QPainter p(&imagen);
    pintarImpreso(p, impreso, tamLetra, codigoBarras, dpi);
    return imagen;
}

}  // namespace hipico
