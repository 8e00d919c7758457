#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

class Context;
class Db;

// The close of the working day ("Cierre del día"): the day's tickets of every
// game are kept (day tables -> kept copies), one daily-totals row is written
// per group and game, and the next working day is opened with every sale
// switch closed. All of it runs in one transaction: a failure anywhere
// leaves the day as it was, and closing the same day again replaces what the
// first close wrote.
class CierreDia {
public:
    explicit CierreDia(Context& ctx);

    // The pools of the day still open, one line per race ("LA RINCONADA
    // CARRERA 3: GANADORES, REMATE").
    QStringList poolsAbiertos(const QString& fecha);
    // The next working day proposed for a day: the following calendar day,
    // never earlier than today.
    QDate fechaPropuesta(const QDate& dia) const;
    // Why a next working day cannot follow the day ("" when it can).
    QString fechaNoValida(const QDate& dia, const QDate& siguiente) const;

    struct Resultado {
        QString fecha;         // the day closed "YYYY-MM-DD"
        QString fechaNueva;    // the next working day
        long long ganadores = 0;  // tickets kept, per game
        long long tablaFija = 0;
        long long macuare = 0;
        long long retirados = 0;  // tickets of old days taken out of the day tables
    };
    // The close itself, without questions: closes the pools of the day when
    // they are open and cerrarPools is true (else refuses), keeps the
    // tickets, writes the totals and opens `siguiente`. Refusals are DbError-free:
    // they come back as the text of the refusal.
    struct Salida {
        std::optional<Resultado> hecho;
        QString negado;
    };
    Salida cerrar(const QDate& siguiente, bool cerrarPools);

    // The window's command: lists the open pools and asks to close them,
    // asks the next working day (proposed), confirms, closes and tells the
    // result. Returns whether the day was closed.
    bool Cerrar();

private:
    Context& ctx_;
};

inline const QString kTituloCierre = QStringLiteral("CIERRE DEL DIA");

}  // namespace hipico
