#include "core/CierreCarreras.h"

namespace hipico {

void cerrarFilaPorFila(Db& db, const std::string& asignacion, const Params& valores, const std::string& donde,
                       const Params& filtro) {
    const Recordset filas = db.query("SELECT id_carrera FROM carreras WHERE " + donde + " ORDER BY id_carrera", filtro);
    const std::string cambio = "UPDATE carreras SET " + asignacion + " WHERE id_carrera = ?";
    for (const Row& fila : filas) {
        Params p = valores;
        p.push_back(fila.integer("id_carrera"));
        db.inTransaction([&] { db.exec(cambio, p); });
    }
}

}  // namespace hipico
