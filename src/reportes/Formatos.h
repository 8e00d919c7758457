#pragma once

#include <QString>
#include <QVariant>

namespace hipico {

// The formats a template's column may name:
//   ""             the value as it is
//   "monto"        money in the session's display (dollars or the local currency)
//   "currency"     the local currency (Bs. 1.234,50)
//   "$#,##0.00"    dollars ($1,234.50)
//   "#,##0.00"     1,234.50      "#,##0"  1,234      "0"  1234
//   "DD-MM-YYYY"   a date "YYYY-MM-DD" shown as "23-11-2026"
//   "estatus"      a ticket's status as its name ("PAGADO")
bool formatoConocido(const QString& formato);
// Numbers: drawn to the right, summed by totals, numbers in exports.
bool formatoNumerico(const QString& formato);
// The money formats (exports give them two decimals).
bool formatoMonetario(const QString& formato);

QString formatear(const QVariant& valor, const QString& formato, bool enDolares);
QString formatearNumero(double valor, const QString& formato, bool enDolares);

// The name of a ticket status (0 to 5).
QString nombreEstatus(long long estatus);

}  // namespace hipico
