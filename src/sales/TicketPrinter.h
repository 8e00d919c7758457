#pragma once

#include "core/Session.h"

#include <QImage>
#include <QString>
#include <QStringList>
#include <memory>
#include <stdexcept>

class QPainter;

namespace hipico {

// One printed piece (ticket, payment slip, summary, test page): its lines in
// order and, for the graphic mode, the code drawn as a Code 128 barcode under
// the text ("" = none).
struct Impreso {
    QStringList lineas;
    QString codigoBarras;
    // What the user must know when the piece does not come out (the ticket
    // was sold all the same...); "" for the plain printing-failure message.
    QString siNoSale;
};

// The printer modes, chosen by the local setting `puerto`.
enum class ModoImpresora {
    Compartida,  // "WINDOWS:"  raw lines to this machine's shared queue "X"
    Grafica,     // "WINDOWS2:" drawn on the default printer, with the barcode
    Puerto,      // anything else: raw lines written to that port or file
};
ModoImpresora modoImpresora(const QString& puerto);
inline const QString kPuertoCompartida = QStringLiteral("WINDOWS:");
inline const QString kPuertoGrafica = QStringLiteral("WINDOWS2:");
// The local queue of the shared mode (a CUPS queue on this machine).
inline const QString kColaCompartida = QStringLiteral("X");

// Raw tickets end with ESC "d" n: the printer feeds n lines so the paper can
// be torn off.
inline constexpr int kLineasAvance = 5;
// The bytes a raw printer receives for a piece: its lines in Windows-1252,
// each ended by CR LF, then the feed sequence.
QByteArray bytesCrudos(const QStringList& lineas);

// A printing failure (no printer, port not writable, queue refused), with
// the reason in Spanish.
class ErrorImpresion : public std::runtime_error {
public:
    explicit ErrorImpresion(const QString& motivo) : std::runtime_error(motivo.toStdString()), motivo_(motivo) {}
    const QString& motivo() const { return motivo_; }

private:
    QString motivo_;
};

class TicketPrinter {
public:
    virtual ~TicketPrinter() = default;
    virtual ModoImpresora modo() const = 0;
    // Prints one piece; throws ErrorImpresion when it could not.
    virtual void imprimir(const Impreso& impreso) = 0;
};

// Raw lines appended to a port or file ("LPT1:", "/dev/usb/lp0", a file).
class ImpresoraPuerto : public TicketPrinter {
public:
    explicit ImpresoraPuerto(QString puerto) : puerto_(std::move(puerto)) {}
    ModoImpresora modo() const override { return ModoImpresora::Puerto; }
    void imprimir(const Impreso& impreso) override;

private:
    QString puerto_;
};

// Raw lines sent to the shared queue through the printing system
// ("lp -d X -o raw").
class ImpresoraCompartida : public TicketPrinter {
public:
    explicit ImpresoraCompartida(QString cola = kColaCompartida) : cola_(std::move(cola)) {}
    ModoImpresora modo() const override { return ModoImpresora::Compartida; }
    void imprimir(const Impreso& impreso) override;

private:
    QString cola_;
};

// Drawn with QPainter on a QPrinter: the system's default printer, or a PDF
// file when one is set (see fijarSalidaPdf). Font "MS Sans Serif" at the
// local font size; the barcode under the text when barcodes are on.
class ImpresoraGrafica : public TicketPrinter {
public:
    ImpresoraGrafica(int tamLetra, bool codigoBarras) : tamLetra_(tamLetra), barras_(codigoBarras) {}
    ModoImpresora modo() const override { return ModoImpresora::Grafica; }
    void imprimir(const Impreso& impreso) override;

private:
    int tamLetra_;
    bool barras_;
};

// Graphic pieces go to this PDF file instead of the default printer (tests,
// and machines without a printer); "" restores the default printer.
void fijarSalidaPdf(const QString& archivoPdf);
QString salidaPdf();

// The printer of the local settings' mode.
std::unique_ptr<TicketPrinter> crearImpresora(const ConfLocal& conf);

// The drawing of a graphic piece, the same on paper and on screen: the text
// lines from the top, then the barcode. Sizes follow the device's dots per inch.
void pintarImpreso(QPainter& p, const Impreso& impreso, int tamLetra, bool codigoBarras, double dpi);
// Height in dots the drawing needs.
double altoImpreso(const Impreso& impreso, int tamLetra, bool codigoBarras, double dpi);
// The graphic piece as a picture (receipt width 80 mm) at the given dots per inch.
QImage imagenImpreso(const Impreso& impreso, int tamLetra, bool codigoBarras, int dpi = 203);

}  // namespace hipico
