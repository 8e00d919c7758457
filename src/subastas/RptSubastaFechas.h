#pragma once

#include "sales/TicketPrinter.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;

// The auction report by dates (Form_RptSubasta_Fechas): each group's
// winner-bet business and its auction result, day by day, into the local
// table rpt_general for the report launcher (kind 38). Closed days come from
// the groups' daily totals (their `remate` written by the day's close); the
// working day is read live from the tickets and the auction rows.
class RptSubastaFechas {
public:
    explicit RptSubastaFechas(Context& ctx) : ctx_(ctx) {}

    // The administrators and supervisors choose any group ("TODOS" first) or a
    // subgroup; the other levels see their own group only.
    bool eligeCualquierGrupo() const;
    QStringList grupos();
    QStringList subgrupos();  // "" first (no subgroup), then the names

    struct Fila {
        QString grupo;
        QString fecha;  // "DD-MM-YYYY"
        double venta = 0;
        double premios = 0;
        double porPagar = 0;
        double saldo = 0;
        double ganadores = 0;  // venta - premios - por pagar
        double tablaFija = 0;
        double remate = 0;
    };
    // Empties rpt_general and writes one row per group and day of the range
    // (a subgroup, when given, chooses its groups). nullopt when refused or
    // nothing was found ("No se encontro Ningun registro").
    std::optional<QVector<Fila>> Procesar(const QDate& desde, const QDate& hasta, const QString& grupo,
                                          const QString& subgrupo);

    // The rows on the receipt printer: "REPORTE VENTA SUBASTA", the range, one
    // line per group and day, the totals.
    Impreso impreso(const QVector<Fila>& filas, const QDate& desde, const QDate& hasta) const;
    bool Imprimir(const QVector<Fila>& filas, const QDate& desde, const QDate& hasta);

    static constexpr int kReporte = 38;
    static inline const QString kTituloReporte = QStringLiteral("REPORTE VENTA SUBASTA");

private:
    Context& ctx_;
};

}  // namespace hipico
