#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <stdexcept>

namespace hipico {

// Raised by RedondearEntero: the whole part does not fit in 16 bits.
class ErrorDesbordamiento : public std::overflow_error {
public:
    ErrorDesbordamiento() : std::overflow_error("Desbordamiento") {}
};
// Raised by RedondearEntero: the whole part is not a number.
class ErrorTipo : public std::invalid_argument {
public:
    ErrorTipo() : std::invalid_argument("No coinciden los tipos") {}
};

// Whole units from a typed amount: the decimal digits, read together as one
// whole number, round up when they are 5 or more (12.05 gives 13, 12.04 gives 12).
QString RedondearEntero(const QString& texto);

// "$#,##0.00": $1,234.50 (negative: -$1,234.50).
QString formatoDolar(double monto);
// The local currency ("currency"): Bs. 1.234,50 (negative: -Bs. 1.234,50).
QString formatoMoneda(double monto);
// Amount as shown by a window: dollars when the dollar display is on, else the local currency.
QString formatoMonto(double monto, bool enDolares);

// The largest amount or count the program takes from what a user types (a
// bet, a limit, a payout, a setting): anything larger is a typing mistake, not
// a real figure, and is refused.
constexpr double kMontoMaximo = 1e9;

// The refusal of a typed text longer than the column it goes into, "" when
// it fits: `nombre` + " ES DEMASIADO LARGO: MAXIMO n CARACTERES".
QString textoDemasiadoLargo(const QString& nombre, const QString& texto, int maximo);

// Amount typed with a decimal comma, as a number ("1500,50" gives 1500.5).
// Returns false when the text is empty or not a number.
bool leerMonto(const QString& texto, double& monto);

// A whole number typed in a box: digits only (blanks around it allowed), at
// most `maximo`. nullopt for anything else, an empty box included.
std::optional<long long> leerEntero(const QString& texto, long long maximo = 999999999);

// A LIKE pattern that finds the typed text anywhere ("%text%"), the text
// matched literally: its %, _ and \ are escaped.
QString patronContiene(const QString& texto);

// Dates: "YYYY-MM-DD" for SQL, "DD-MM-YYYY" on screen and paper.
QString fechaSql(const QDate& fecha);
// "MMdd": the month and day of a date, as in a ticket's code.
QString mesDia(const QDate& fecha);
QString fechaVista(const QDate& fecha);
QString fechaVista(const QString& fechaSqlTexto);  // "2026-11-23" gives "23-11-2026"
QDate desdeFechaSql(const QString& texto);
QString horaTexto(const QTime& hora);  // "hh:mm:ss"

}  // namespace hipico
