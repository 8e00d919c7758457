#pragma once

#include <QString>

class QPainter;

namespace hipico {

// Barcodes of tickets. An encoder turns a text into a pattern: a string of
// digits, each the width of one element in modules, elements alternating
// bar, space, bar, ... starting with a bar. An empty pattern means the text
// cannot be written in that symbology.

// Code 39: text upper-cased; "0"-"9", "A"-"Z", "-", ".", " ", "$", "/", "+",
// "%"; "*" start and stop; wide elements 3 modules; one narrow space between
// characters.
QString patronCode39(const QString& texto);
// Code 128, always code set B: Start B, the characters, the check symbol
// (104 + the sum of position x value, positions from 1) modulo 103, stop.
QString patronCode128(const QString& texto);
// Interleaved 2 of 5: digits only; an odd-length text gets a leading "0";
// start "1111", stop "311"; wide elements 3 modules.
QString patronEntrelazado25(const QString& texto);
// Codabar: text upper-cased; "0"-"9", "-", "$", ":", "/", ".", "+" and the
// start/stop letters "A"-"D". A text that does not begin and end with a
// start/stop letter is framed by "A" ... "A". Wide elements 3 modules; one
// narrow space between characters.
QString patronCodabar(const QString& texto);

// The pattern of a symbology by its name: "39", "128", "2/5" or "Codabar".
QString patronBarras(const QString& texto, const QString& simbologia);

// Spaces are drawn this many times wider than bars of the same digit.
inline constexpr double kEnsancheEspacios = 1.3;

// The clear margin a scanner needs on each side of a barcode, in modules.
inline constexpr int kZonaSilenciosaModulos = 10;

// Width of a pattern once drawn, in the units of the module width.
double anchoPatron(const QString& patron, double modulo);

// Draws the text as a barcode of the symbology: bars are filled black
// rectangles from the top down by the bar height; spaces advance by their
// width x 1.3. Bar edges fall on whole units of the device (dots), so with a
// module of whole dots each bar is a whole number of modules. Returns the
// width drawn (0 when the text cannot be encoded).
double dibujarCodigoBarras(QPainter& p, const QString& texto, const QString& simbologia, double izquierda,
                           double arriba, double modulo, double alto);

}  // namespace hipico
