#pragma once

#include "sales/Juego.h"

#include <QString>
#include <QVector>
#include <optional>

namespace hipico {

class Context;

// The booth's own winner tickets of the working day: the latest ones with
// their status (a voided ticket from the audit log), the ticket as the
// booth describes it before voiding it, and a copy printed again.
// Database failures go to the caller.

struct BoletoDia {
    long long numero = 0;
    QString codigo;
    QString hora;
    long long carrera = 0;
    long long caballo = 0;
    QString nombreCaballo;
    double ganadores = 0;
    double costo = 0;    // units x the unit price
    double cobrado = 0;  // payout or refund, when due or paid
    Estatus estatus = Estatus::Vendido;
};

// The status as the booth's list shows it ("VENDIDO", "ANULADO"...).
QString textoEstatus(Estatus e);

// The booth's latest tickets of the working day, newest first, voided ones
// included.
QVector<BoletoDia> boletosDelDia(Context& ctx, int cuantos);

// A ticket of this booth still standing (not voided), by its number.
std::optional<BoletoDia> boletoVigente(Context& ctx, long long numero);

// The lines that show a ticket before it is voided.
QString descripcionBoleto(const BoletoDia& b, bool enDolares);

// A copy of a ticket of this booth, marked as a copy with the time of the
// reprint. A voided ticket, or one that is not this booth's, is refused (and
// the user told): nullopt.
std::optional<Impreso> copiaGanador(Context& ctx, long long numero, bool grafico);

inline const QString kTituloReimpresion = QStringLiteral("REIMPRESION DE BOLETOS");

}  // namespace hipico
