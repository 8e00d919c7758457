#include "sales/Barcode.h"

#include <QPainter>

#include <cmath>

namespace hipico {

namespace {

// The 107 patterns of Code 128, by value (103-105 the three starts, 106 the stop).
const char* const kCode128[107] = {
    "212222", "222122", "222221", "121223", "121322", "131222", "122213", "122312", "132212", "221213",
    "221312", "231212", "112232", "122132", "122231", "113222", "123122", "123221", "223211", "221132",
    "221231", "213212", "223112", "312131", "311222", "321122", "321221", "312212", "322112", "322211",
    "212123", "212321", "232121", "111323", "131123", "131321", "112313", "132113", "132311", "211313",
    "231113", "231311", "112133", "112331", "132131", "113123", "113321", "133121", "313121", "211331",
    "231131", "213113", "213311", "213131", "311123", "311321", "331121", "312113", "312311", "332111",
    "314111", "221411", "431111", "111224", "111422", "121124", "121421", "141122", "141221", "112214",
    "112412", "122114", "122411", "142112", "142211", "241211", "221114", "413111", "241112", "134111",
    "111242", "121142", "121241", "114212", "124112", "124211", "411212", "421112", "421211", "212141",
    "214121", "412121", "111143", "111341", "131141", "114113", "114311", "411113", "411311", "113141",
    "114131", "311141", "411131", "211412", "211214", "211232", "2331112",
};
constexpr int kStartB = 104;
constexpr int kStop = 106;

// Narrow (0) and wide (1) elements of each character, bar first.
struct Caracter {
    char c;
    const char* elementos;
};

const Caracter kCode39[] = {
    {'0', "000110100"}, {'1', "100100001"}, {'2', "001100001"}, {'3', "101100000"}, {'4', "000110001"},
    {'5', "100110000"}, {'6', "001110000"}, {'7', "000100101"}, {'8', "100100100"}, {'9', "001100100"},
    {'A', "100001001"}, {'B', "001001001"}, {'C', "101001000"}, {'D', "000011001"}, {'E', "100011000"},
    {'F', "001011000"}, {'G', "000001101"}, {'H', "100001100"}, {'I', "001001100"}, {'J', "000011100"},
    {'K', "100000011"}, {'L', "001000011"}, {'M', "101000010"}, {'N', "000010011"}, {'O', "100010010"},
    {'P', "001010010"}, {'Q', "000000111"}, {'R', "100000110"}, {'S', "001000110"}, {'T', "000010110"},
    {'U', "110000001"}, {'V', "011000001"}, {'W', "111000000"}, {'X', "010010001"}, {'Y', "110010000"},
    {'Z', "011010000"}, {'-', "010000101"}, {'.', "110000100"}, {' ', "011000100"}, {'$', "010101000"},
    {'/', "010100010"}, {'+', "010001010"}, {'%', "000101010"}, {'*', "010010100"},
};

const char* const kDigitos25[10] = {"00110", "10001", "01001", "11000", "00101",
                                    "10100", "01100", "00011", "10010", "01010"};

const Caracter kCodabar[] = {
    {'0', "0000011"}, {'1', "0000110"}, {'2', "0001001"}, {'3', "1100000"}, {'4', "0010010"},
    {'5', "1000010"}, {'6', "0100001"}, {'7', "0100100"}, {'8', "0110000"}, {'9', "1001000"},
    {'-', "0001100"}, {'$', "0011000"}, {':', "1000101"}, {'/', "1010001"}, {'.', "1010100"},
    {'+', "0010101"}, {'A', "0011010"}, {'B', "0101001"}, {'C', "0001011"}, {'D', "0001110"},
};

constexpr char kAncho = '3';
constexpr char kAngosto = '1';

template <std::size_t N>
const char* buscar(const Caracter (&tabla)[N], QChar c) {
    for (const Caracter& k : tabla)
        if (QChar(QLatin1Char(k.c)) == c) return k.elementos;
    return nullptr;
}

QString anchos(const char* elementos) {
    QString out;
    for (const char* e = elementos; *e; ++e) out += QLatin1Char(*e == '1' ? kAncho : kAngosto);
    return out;
}

bool esInicioCodabar(QChar c) { return c >= QLatin1Char('A') && c <= QLatin1Char('D'); }

}  // namespace

QString patronCode39(const QString& texto) {
    const QString t = QStringLiteral("*") + texto.toUpper() + QStringLiteral("*");
    QString patron;
    for (int i = 0; i < t.size(); ++i) {
        // "*" only frames the text.
        if (t[i] == QLatin1Char('*') && i != 0 && i != t.size() - 1) return {};
        const char* e = buscar(kCode39, t[i]);
        if (!e) return {};
        if (i > 0) patron += QLatin1Char(kAngosto);
        patron += anchos(e);
    }
    return patron;
}

QString patronCode128(const QString& texto) {
    QString patron = QLatin1String(kCode128[kStartB]);
    long suma = kStartB;
    int posicion = 1;
    for (const QChar c : texto) {
        const int codigo = c.unicode();
        if (codigo < 32 || codigo > 127) return {};
        const int valor = codigo - 32;
        patron += QLatin1String(kCode128[valor]);
        suma += static_cast<long>(posicion) * valor;
        ++posicion;
    }
    patron += QLatin1String(kCode128[suma % 103]);
    patron += QLatin1String(kCode128[kStop]);
    return patron;
}

QString patronEntrelazado25(const QString& texto) {
    QString t = texto;
    if (t.isEmpty()) return {};
    for (const QChar c : t)
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return {};
    if (t.size() % 2 != 0) t.prepend(QLatin1Char('0'));
    QString patron = QStringLiteral("1111");
    for (int i = 0; i < t.size(); i += 2) {
        const char* barras = kDigitos25[t[i].unicode() - '0'];
        const char* espacios = kDigitos25[t[i + 1].unicode() - '0'];
        for (int k = 0; k < 5; ++k) {
            patron += QLatin1Char(barras[k] == '1' ? kAncho : kAngosto);
            patron += QLatin1Char(espacios[k] == '1' ? kAncho : kAngosto);
        }
    }
    patron += QStringLiteral("311");
    return patron;
}

QString patronCodabar(const QString& texto) {
    QString t = texto.toUpper();
    if (t.isEmpty()) return {};
    if (!(t.size() >= 2 && esInicioCodabar(t.front()) && esInicioCodabar(t.back())))
        t = QStringLiteral("A") + t + QStringLiteral("A");
    QString patron;
    for (int i = 0; i < t.size(); ++i) {
        // Start/stop letters only at the ends.
        if (esInicioCodabar(t[i]) && i != 0 && i != t.size() - 1) return {};
        const char* e = buscar(kCodabar, t[i]);
        if (!e) return {};
        if (i > 0) patron += QLatin1Char(kAngosto);
        patron += anchos(e);
    }
    return patron;
}

QString patronBarras(const QString& texto, const QString& simbologia) {
    if (simbologia == QLatin1String("39")) return patronCode39(texto);
    if (simbologia == QLatin1String("128")) return patronCode128(texto);
    if (simbologia == QLatin1String("2/5")) return patronEntrelazado25(texto);
    if (simbologia.compare(QLatin1String("Codabar"), Qt::CaseInsensitive) == 0) return patronCodabar(texto);
    return {};
}

double anchoPatron(const QString& patron, double modulo) {
    double x = 0;
    for (int i = 0; i < patron.size(); ++i) {
        const double ancho = patron[i].digitValue() * modulo;
        x += i % 2 == 0 ? ancho : ancho * kEnsancheEspacios;
    }
    return x;
}

double dibujarCodigoBarras(QPainter& p, const QString& texto, const QString& simbologia, double izquierda,
                           double arriba, double modulo, double alto) {
    const QString patron = patronBarras(texto, simbologia);
    if (patron.isEmpty()) return 0;
    // Bars start and end on whole dots of the device: with a module of
    // whole dots every bar is exactly its modules wide, and the widened
    // spaces absorb the rounding.
    double x = izquierda;
    for (int i = 0; i < patron.size(); ++i) {
        const double ancho = patron[i].digitValue() * modulo;
        if (i % 2 == 0) {  // a bar: odd position counting from 1
            const double desde = std::round(x);
            p.fillRect(QRectF(desde, arriba, std::round(x + ancho) - desde, alto), Qt::black);
            x += ancho;
        } else {
            x += ancho * kEnsancheEspacios;
        }
    }
    return x - izquierda;
}

}  // namespace hipico
