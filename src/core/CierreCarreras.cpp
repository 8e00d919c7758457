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

void escribirCarreras(Db& db, const std::string& asignacion, const Params& valores, const std::string& donde,
                      const Params& filtro, bool cierre, const std::function<void()>& antes) {
    if (cierre) cerrarFilaPorFila(db, asignacion, valores, donde, filtro);
    Params p = valores;
    p.insert(p.end(), filtro.begin(), filtro.end());
    db.inTransaction([&] {
        if (antes) antes();
        db.exec("update carreras set " + asignacion + " Where " + donde, p);
    });
}

}  // namespace hipico
