#include "core/Cipher.h"

#include <stdexcept>

namespace hipico {

namespace {

// Unicode of the Windows-1252 codes 0x80..0x9F; the five unassigned codes map
// to the C1 control of the same value, as Windows' own conversion does.
constexpr char16_t kAlto[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The key character for position i (1-based): 1..L, then (i mod L) + 1.
int codigoClave(const QString& clave, int i) {
    const int largo = static_cast<int>(clave.size());
    const int pos = i <= largo ? i : (i % largo) + 1;
    return codigoAnsi(clave.at(pos - 1));
}

}  // namespace

int codigoAnsi(QChar c) {
    const char16_t u = c.unicode();
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) return u;
    for (int k = 0; k < 32; ++k)
        if (kAlto[k] == u) return 0x80 + k;
    return u & 0xFF;
}

QChar caracterAnsi(int codigo) {
    if (codigo < 0 || codigo > 255) throw std::range_error("código de carácter no válido");
    if (codigo >= 0x80 && codigo < 0xA0) return QChar(kAlto[codigo - 0x80]);
    return QChar(static_cast<char16_t>(codigo));
}

QString Encriptar(const QString& texto, const QString& clave) {
    if (clave.isEmpty()) return texto;
    QString out;
    out.reserve(texto.size());
    for (int i = 1; i <= texto.size(); ++i) {
        int s = codigoAnsi(texto.at(i - 1)) + codigoClave(clave, i) + 64;
        if (s > 255) s -= 256;
        out.append(caracterAnsi(s));
    }
    return out;
}

QString Desencriptar(const QString& texto, const QString& clave) {
    if (clave.isEmpty()) return texto;
    QString out;
    out.reserve(texto.size());
    for (int i = 1; i <= texto.size(); ++i) {
        int s = codigoAnsi(texto.at(i - 1)) - codigoClave(clave, i) - 64;
        if (s < 0) s += 256;
        out.append(caracterAnsi(s));
    }
    return out;
}

}  // namespace hipico
