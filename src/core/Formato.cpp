#include "core/Formato.h"

#include <QLocale>
#include <cmath>

namespace hipico {

QString RedondearEntero(const QString& texto) {
    QString entera, decimal;
    bool separador = false;
    for (const QChar c : texto) {
        const bool esSeparador = c == QLatin1Char('.') || c == QLatin1Char(',');
        if (!separador) {
            if (esSeparador) separador = true;
            else entera.append(c);
        } else if (!esSeparador) {
            decimal.append(c);
        }
    }
    // The decimal part is read as a number: its leading digits count, the rest is ignored.
    double valorDecimal = 0;
    {
        QString digitos;
        for (const QChar c : decimal.trimmed()) {
            if (!c.isDigit()) break;
            digitos.append(c);
        }
        if (!digitos.isEmpty()) valorDecimal = digitos.toDouble();
    }
    const QString t = entera.trimmed();
    if (t.isEmpty()) throw ErrorTipo();
    int inicio = (t.startsWith(QLatin1Char('-')) || t.startsWith(QLatin1Char('+'))) ? 1 : 0;
    if (inicio == t.size()) throw ErrorTipo();
    for (int i = inicio; i < t.size(); ++i)
        if (!t.at(i).isDigit() || t.at(i).unicode() > 127) throw ErrorTipo();
    bool ok = false;
    const double valor = t.toDouble(&ok);
    if (!ok) throw ErrorTipo();
    if (valor > 32767 || valor < -32768) throw ErrorDesbordamiento();
    int resultado = static_cast<int>(valor);
    if (valorDecimal >= 5) {
        if (resultado == 32767) throw ErrorDesbordamiento();
        resultado += 1;
    }
    return QString::number(resultado);
}

namespace {

QString agrupar(double monto, QChar miles, QChar decimal) {
    const double redondo = std::round(std::fabs(monto) * 100.0) / 100.0;
    QString digitos = QString::number(redondo, 'f', 2);
    const QString parteDecimal = digitos.mid(digitos.size() - 2);
    QString entera = digitos.left(digitos.size() - 3);
    QString agrupada;
    for (int i = 0; i < entera.size(); ++i) {
        if (i > 0 && (entera.size() - i) % 3 == 0) agrupada.append(miles);
        agrupada.append(entera.at(i));
    }
    return agrupada + decimal + parteDecimal;
}

bool negativo(double monto) { return std::round(monto * 100.0) < 0; }

}  // namespace

QString formatoDolar(double monto) {
    return (negativo(monto) ? QStringLiteral("-$") : QStringLiteral("$")) +
           agrupar(monto, QLatin1Char(','), QLatin1Char('.'));
}

QString formatoMoneda(double monto) {
    return (negativo(monto) ? QStringLiteral("-Bs. ") : QStringLiteral("Bs. ")) +
           agrupar(monto, QLatin1Char('.'), QLatin1Char(','));
}

QString formatoMonto(double monto, bool enDolares) {
    return enDolares ? formatoDolar(monto) : formatoMoneda(monto);
}

bool leerMonto(const QString& texto, double& monto) {
    QString t = texto.trimmed();
    if (t.isEmpty()) return false;
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    for (const QChar c : t)
        if (!(c.isDigit() && c.unicode() < 128) && c != QLatin1Char('.') && c != QLatin1Char('-')) return false;
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (!ok || !std::isfinite(v)) return false;
    monto = v;
    return true;
}

std::optional<long long> leerEntero(const QString& texto, long long maximo) {
    const QString t = texto.trimmed();
    if (t.isEmpty() || t.size() > 18) return std::nullopt;
    for (const QChar c : t)
        if (!(c.isDigit() && c.unicode() < 128)) return std::nullopt;
    const long long v = t.toLongLong();
    if (v > maximo) return std::nullopt;
    return v;
}

QString patronContiene(const QString& texto) {
    QString t = texto;
    t.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    t.replace(QLatin1Char('%'), QLatin1String("\\%"));
    t.replace(QLatin1Char('_'), QLatin1String("\\_"));
    return QLatin1Char('%') + t + QLatin1Char('%');
}

namespace {

// Years 1 to 9999 are written with their digits (every sale writes and reads
// a few dates; Qt's format parser is slow); any other date through Qt.
// The date's year, month and day when its year has four digits at most.
bool enCifras(const QDate& fecha, int& anio, int& mes, int& dia) {
    if (!fecha.isValid()) return false;
    fecha.getDate(&anio, &mes, &dia);
    return anio >= 1 && anio <= 9999;
}

// `n` written with `cifras` digits at `destino`.
void cifras(char16_t* destino, int n, int cifras) {
    for (int i = cifras - 1; i >= 0; --i, n /= 10) destino[i] = char16_t(u'0' + n % 10);
}

// Year, month and day joined by dashes: the year first, or last.
QString conGuiones(int anio, int mes, int dia, bool anioPrimero) {
    char16_t t[10];
    t[anioPrimero ? 4 : 2] = t[anioPrimero ? 7 : 5] = u'-';
    cifras(t + (anioPrimero ? 0 : 6), anio, 4);
    cifras(t + (anioPrimero ? 5 : 3), mes, 2);
    cifras(t + (anioPrimero ? 8 : 0), dia, 2);
    return QString(reinterpret_cast<const QChar*>(t), 10);
}

}  // namespace

QString fechaSql(const QDate& fecha) {
    int a = 0, m = 0, d = 0;
    return enCifras(fecha, a, m, d) ? conGuiones(a, m, d, true) : fecha.toString(QStringLiteral("yyyy-MM-dd"));
}
QString fechaVista(const QDate& fecha) {
    int a = 0, m = 0, d = 0;
    return enCifras(fecha, a, m, d) ? conGuiones(a, m, d, false) : fecha.toString(QStringLiteral("dd-MM-yyyy"));
}
QString mesDia(const QDate& fecha) {
    int a = 0, m = 0, d = 0;
    if (!enCifras(fecha, a, m, d)) return fecha.toString(QStringLiteral("MMdd"));
    char16_t t[4];
    cifras(t, m, 2);
    cifras(t + 2, d, 2);
    return QString(reinterpret_cast<const QChar*>(t), 4);
}
QString fechaVista(const QString& fechaSqlTexto) {
    const QDate d = desdeFechaSql(fechaSqlTexto);
    return d.isValid() ? fechaVista(d) : fechaSqlTexto;
}
QDate desdeFechaSql(const QString& texto) {
    const QStringView t = QStringView(texto).left(10);
    // "YYYY-MM-DD" read digit by digit; anything else through Qt's parser.
    const auto cifras = [&](int desde, int n) {
        int v = 0;
        for (int i = desde; i < desde + n; ++i) {
            const QChar c = t[i];
            if (c < QLatin1Char('0') || c > QLatin1Char('9')) return -1;
            v = v * 10 + (c.unicode() - '0');
        }
        return v;
    };
    if (t.size() == 10 && t[4] == QLatin1Char('-') && t[7] == QLatin1Char('-')) {
        const int y = cifras(0, 4), m = cifras(5, 2), d = cifras(8, 2);
        if (y >= 0 && m >= 0 && d >= 0) return QDate(y, m, d);
    }
    return QDate::fromString(texto.left(10), QStringLiteral("yyyy-MM-dd"));
}
QString horaTexto(const QTime& hora) { return hora.toString(QStringLiteral("hh:mm:ss")); }

QString textoDemasiadoLargo(const QString& nombre, const QString& texto, int maximo) {
    // The column counts characters, not UTF-16 units.
    if (texto.toUcs4().size() <= maximo) return {};
    return nombre + QStringLiteral(" ES DEMASIADO LARGO: MAXIMO %1 CARACTERES").arg(maximo);
}

}  // namespace hipico
