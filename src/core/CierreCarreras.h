#pragma once

#include "core/Db.h"

#include <functional>
#include <string>

namespace hipico {

// The close of race-card rows (`carreras`) that gets through booths selling
// them: every sale writes its horse's row, and a close that writes all the
// race's rows in one transaction meets, on a cluster, any sale of any of
// them committed on another node meanwhile, and runs again; under heavy
// selling it may never get through. Each row the selection `donde` names is
// first written alone (`asignacion`, e.g. "venta=?,venta_tf=?", with
// `valores`), in a transaction of its own and in key order, so the close
// meets one horse's sales at a time; the caller's own statement for the
// whole selection then runs as before, finds those rows already written and
// writes only rows that came meanwhile. On one server each row's write waits
// for the sale in flight on it, as the whole statement did.
void cerrarFilaPorFila(Db& db, const std::string& asignacion, const Params& valores, const std::string& donde,
                       const Params& filtro);

// Sets the flags on the race-card rows `donde` selects in one transaction
// (run again whole on a conflict), after `antes` when given (in the same
// transaction); a close (`cierre`) first row by row, as above.
void escribirCarreras(Db& db, const std::string& asignacion, const Params& valores, const std::string& donde,
                      const Params& filtro, bool cierre, const std::function<void()>& antes = {});

}  // namespace hipico
