#pragma once

#include "core/Recordset.h"

#include <QString>

namespace hipico {

class Db;

// Rules of winner-bet tickets shared by every window that voids them.

// Whether the race of that date already has its winner set
// ("SELECT distinct win_ganadores FROM carreras where fecha= ... and carrera= ...").
bool carreraProcesada(Db& db, const QString& fecha, long long carrera);

// Voids a ticket: the audit row (status 5, reason, user) and the delete of the
// ticket, in one transaction with the ticket's row locked. Returns false, and
// writes nothing, when the ticket is no longer there (voided meanwhile by
// another booth). The ticket row is the one the caller looked up.
bool anularBoletoGanador(Db& db, const Row& boleto, const QString& motivo, const QString& usuario);

// The audit row of a ticket with the given status (5 voided; the administration
// also logs the payments and refunds it makes).
void escribirBitacora(Db& db, const Row& boleto, const QString& motivo, const QString& usuario, int estatus);

// The writes of a void, for a caller that already holds the ticket's row
// locked inside its own transaction: the audit row (status 5) and the delete.
void escribirAnulacion(Db& db, const Row& boletoBloqueado, const QString& motivo, const QString& usuario);

}  // namespace hipico
