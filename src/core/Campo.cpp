#include "core/Campo.h"

#include "core/Formato.h"

#include <QLocale>
#include <cmath>

namespace hipico {

namespace {

using T = Campo::Tipo;

QString limitesTexto(const Campo& c) {
    const QLocale es(QLocale::Spanish, QLocale::Venezuela);
    auto n = [&](double v) { return c.tipo == T::Entero ? es.toString(qlonglong(v)) : numeroVista(v); };
    return n(c.minimo) + QStringLiteral(" Y ") + n(c.maximo);
}

}  // namespace

namespace campo {

Campo interruptor(const char* columna, const char* etiqueta, const QString& pestana) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Interruptor, 0, 1, 0, {}};
}
Campo entero(const char* columna, const char* etiqueta, const QString& pestana, double minimo, double maximo) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Entero, minimo, maximo, 0, {}};
}
Campo decimal(const char* columna, const char* etiqueta, const QString& pestana, double minimo, double maximo) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Decimal, minimo, maximo, 0, {}};
}
Campo textoLibre(const char* columna, const char* etiqueta, const QString& pestana, int largo) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Texto, 0, 0, largo, {}};
}
Campo opcion(const char* columna, const char* etiqueta, const QString& pestana, QStringList opciones) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Opcion, 0, double(opciones.size() - 1), 0, opciones};
}
Campo fecha(const char* columna, const char* etiqueta, const QString& pestana) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Fecha, 0, 0, 10, {}};
}
Campo lista(const char* columna, const char* etiqueta, const QString& pestana, QStringList opciones) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Lista, 0, 0, 0, std::move(opciones)};
}
Campo clave(const char* columna, const char* etiqueta, const QString& pestana, int largo) {
    return {columna, QString::fromUtf8(etiqueta), pestana, T::Clave, 0, 0, largo, {}};
}
Campo requerido(Campo c) {
    c.requerido = true;
    return c;
}

}  // namespace campo

QString numeroVista(double v) {
    QString t = QString::number(v, 'f', 6);
    while (t.contains('.') && (t.endsWith('0') || t.endsWith('.'))) t.chop(1);
    t.replace(QLatin1Char('.'), QLatin1Char(','));
    return t;
}

QStringList pestanas(const QVector<Campo>& campos) {
    QStringList out;
    for (const Campo& c : campos)
        if (!out.contains(c.pestana)) out << c.pestana;
    return out;
}

ValoresCampos valoresDe(const Row& fila, const QVector<Campo>& campos) {
    ValoresCampos out;
    for (const Campo& c : campos) {
        switch (c.tipo) {
        case T::Fecha: out[c.columna] = fechaVista(fila.textOr(c.columna)); break;
        case T::Decimal: out[c.columna] = numeroVista(fila.numberOr(c.columna)); break;
        case T::Entero:
        case T::Interruptor:
        case T::Opcion: out[c.columna] = QString::number(fila.integerOr(c.columna)); break;
        case T::Texto:
        case T::Lista: out[c.columna] = fila.textOr(c.columna); break;
        case T::Clave: out[c.columna] = QString(); break;
        }
    }
    return out;
}

QString validarCampo(const Campo& c, const QString& entrada, SqlValue& valor) {
    const QString t = c.tipo == T::Clave ? entrada : entrada.trimmed();
    const QString campo = QStringLiteral("EL CAMPO ") + c.etiqueta;
    switch (c.tipo) {
    case T::Texto:
    case T::Clave:
        if (const QString largo = textoDemasiadoLargo(campo, t, c.largo); !largo.isEmpty()) return largo;
        valor = t;
        return {};
    case T::Lista:
        if (!c.opciones.contains(t)) return campo + QStringLiteral(" NO ES UNA OPCION DE LA LISTA");
        valor = t;
        return {};
    case T::Fecha: {
        const QDate d = QDate::fromString(t, QStringLiteral("dd-MM-yyyy"));
        if (!d.isValid()) return campo + QStringLiteral(" NO ES UNA FECHA VALIDA (DD-MM-AAAA)");
        valor = fechaSql(d);
        return {};
    }
    case T::Interruptor:
    case T::Opcion:
    case T::Entero: {
        const auto n = leerEntero(t);
        if (!n || *n < c.minimo || *n > c.maximo) {
            if (c.tipo == T::Entero)
                return campo + QStringLiteral(" NO ES VALIDO: DEBE SER UN NUMERO ENTERO ENTRE ") + limitesTexto(c);
            return campo + QStringLiteral(" NO ES VALIDO");
        }
        valor = *n;
        return {};
    }
    case T::Decimal: {
        double v = 0;
        if (!leerMonto(t, v) || !std::isfinite(v) || v < c.minimo || v > c.maximo)
            return campo + QStringLiteral(" NO ES VALIDO: DEBE SER UN NUMERO ENTRE ") + limitesTexto(c);
        valor = v;
        return {};
    }
    }
    return campo + QStringLiteral(" NO ES VALIDO");
}

}  // namespace hipico
