#include "reportes/Formatos.h"

#include "core/Formato.h"
#include "core/Recordset.h"

#include <QLocale>
#include <QStringList>
#include <cmath>

namespace hipico {

namespace {

const QStringList& numericos() {
    static const QStringList f = {"monto", "currency", "$#,##0.00", "#,##0.00", "#,##0", "0"};
    return f;
}

// Thousands with "," and decimals with ".", as the pattern is written.
QString conMiles(double valor, int decimales) {
    static const QLocale c = [] {
        QLocale l(QLocale::English, QLocale::UnitedStates);
        l.setNumberOptions(QLocale::DefaultNumberOptions);
        return l;
    }();
    return c.toString(valor, 'f', decimales);
}

}  // namespace

bool formatoConocido(const QString& formato) {
    return formato.isEmpty() || numericos().contains(formato) || formato == QLatin1String("DD-MM-YYYY") ||
           formato == QLatin1String("estatus");
}

bool formatoNumerico(const QString& formato) { return numericos().contains(formato); }

bool formatoMonetario(const QString& formato) {
    return formato == QLatin1String("monto") || formato == QLatin1String("currency") ||
           formato == QLatin1String("$#,##0.00") || formato == QLatin1String("#,##0.00");
}

QString nombreEstatus(long long estatus) {
    static const QStringList nombres = {"VENDIDO", "GANADOR", "PAGADO", "DEV. PAGADA", "DEVOLUCION", "ANULADO"};
    return estatus >= 0 && estatus < nombres.size() ? nombres[estatus] : QString::number(estatus);
}

QString formatearNumero(double valor, const QString& formato, bool enDolares) {
    if (formato == QLatin1String("monto")) return formatoMonto(valor, enDolares);
    if (formato == QLatin1String("currency")) return formatoMoneda(valor);
    if (formato == QLatin1String("$#,##0.00")) return formatoDolar(valor);
    if (formato == QLatin1String("#,##0.00")) return conMiles(valor, 2);
    if (formato == QLatin1String("#,##0")) return conMiles(std::round(valor), 0);
    return QString::number(std::llround(valor));
}

QString formatear(const QVariant& valor, const QString& formato, bool enDolares) {
    if (formatoNumerico(formato)) return formatearNumero(Row::toNumber(valor), formato, enDolares);
    if (formato == QLatin1String("estatus")) return nombreEstatus(Row::toInteger(valor));
    const QString texto = Row::toText(valor);
    if (formato == QLatin1String("DD-MM-YYYY")) {
        // A date column, or a date kept as text; a text already shown as a date stays.
        const QDate fecha = desdeFechaSql(texto.left(10));
        return fecha.isValid() ? fechaVista(fecha) : texto;
    }
    return texto;
}

}  // namespace hipico
