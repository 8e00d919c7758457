#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

class Db;

// The money journal (`diario`): every operation that moves money or a
// ticket's state appends one row in its own transaction, so the row exists
// exactly when the operation was committed. Rows form chains, one per
// machine: each row carries the previous row's SHA-256 and its own over all
// its values, so a row changed, deleted or slipped into the middle of a chain
// breaks it. The program's database user may insert rows but not change or
// delete them.

// What each row says happened.
namespace operacion {
inline const QString Venta = QStringLiteral("VENTA");
inline const QString Pago = QStringLiteral("PAGO");
inline const QString Anulacion = QStringLiteral("ANULACION");
// The payout a race leaves due to a group (results processed, corrected or
// voided, a race refunded): replaces that race's earlier one for the group.
inline const QString Premios = QStringLiteral("PREMIOS");
inline const QString Renumeracion = QStringLiteral("RENUMERACION");
inline const QString Cierre = QStringLiteral("CIERRE");
inline const QString Remate = QStringLiteral("REMATE");
}  // namespace operacion

struct AsientoDiario {
    QString operacion;
    QString tabla;    // the tickets' table ("ma_principal"), "" for none
    QString codigo;   // the ticket's code, "" for none
    QString grupo;
    QString fecha;    // the day the money belongs to ("YYYY-MM-DD")
    long long carrera = 0;
    double unidades = 0;  // units of a ticket (winner bets) or its stake
    double monto = 0;     // money
};

// Appends the row inside the caller's transaction (it must be open): the
// chain's last row is locked, so two appends of one machine never fork it.
// The user and machine are the connection's signature (Db::firmar).
void anotar(Db& db, const AsientoDiario& a);

// After a change of the payouts of a race's winner tickets (processed,
// corrected, voided, refunded): one PREMIOS row per group holding tickets of
// the race (only `grupo`'s when given), with what the race leaves due to it.
void anotarPremios(Db& db, const QString& fecha, long long carrera, const QString& grupo = {});

// The machine's name as the journal keeps it (the host's name unless set).
QString maquinaLocal();
void fijarMaquinaLocal(const QString& nombre);

// What `verificar` found for a day.
struct InformeDiario {
    long long filas = 0;                 // rows walked (every chain)
    std::optional<long long> primeraMala;  // id of the first row that breaks its chain
    QStringList diferencias;             // one line per difference, empty when all agree
    // The day rebuilt from the journal alone, per group.
    struct Totales {
        double vendido = 0;   // units sold less units voided
        double pagado = 0;
        double porPagar = 0;
        long long anulados = 0;
    };
    QMap<QString, Totales> grupos;
    bool correcto() const { return !primeraMala && diferencias.isEmpty(); }
};

// Walks every chain, then rebuilds the day's winner-bet totals per group
// from the journal and compares them with the tickets, the audit log of
// voids and, once the day is closed, its daily totals.
InformeDiario verificarDiario(Db& db, const QString& fecha);

}  // namespace hipico
