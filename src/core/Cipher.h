#pragma once

#include <QString>

namespace hipico {

// The key under which passwords and the result keys of tickets are enciphered.
inline const QString kClaveMaestra = QStringLiteral("493027kmzt");

// Reversible character cipher with a text key. Character codes are those of
// the Windows-1252 code page; the result has the length of the text.
// Throws std::range_error when a code falls outside 0..255 after the single
// correction (only possible with texts or keys outside that code page).
QString Encriptar(const QString& texto, const QString& clave);
QString Desencriptar(const QString& texto, const QString& clave);

// Windows-1252 code of a character (characters outside the code page give
// their low byte, as the single-byte conversion does) and its inverse.
int codigoAnsi(QChar c);
QChar caracterAnsi(int codigo);

}  // namespace hipico
