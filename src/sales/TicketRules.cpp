#include "sales/TicketRules.h"

#include "core/Db.h"

namespace hipico {

bool carreraProcesada(Db& db, const QString& fecha, long long carrera) {
    const Recordset rs =
        db.query("SELECT distinct win_ganadores FROM carreras where fecha= ? and carrera=  ?  ;", {fecha, carrera});
    for (const Row& r : rs)
        if (r.integer("win_ganadores") != 0) return true;
    return false;
}

bool anularBoletoGanador(Db& db, const Row& boleto, const QString& motivo, const QString& usuario) {
    return db.inTransaction([&] {
        const Recordset actual = db.query("SELECT * FROM ma_principal Where numero = ? FOR UPDATE",
                                          {boleto.integer("numero")});
        if (actual.empty()) return false;
        escribirAnulacion(db, actual.first(), motivo, usuario);
        return true;
    });
}

void escribirBitacora(Db& db, const Row& b, const QString& motivo, const QString& usuario, int estatus) {
    db.exec("INSERT INTO `bitacora` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?);",
            {b.integer("numero"), b.integer("carrera"), b.integer("caballo"), b.number("ganadores"), b.text("ch"),
             b.text("grupo"), b.text("hora"), b.text("fecha"), b.text("nu_boleto"), b.number("cobrado"), motivo,
             usuario, estatus});
}

void escribirAnulacion(Db& db, const Row& b, const QString& motivo, const QString& usuario) {
    escribirBitacora(db, b, motivo, usuario, 5);
    db.exec("delete from  ma_principal  Where nu_boleto = ? and numero = ? limit 1 ",
            {b.text("nu_boleto"), b.integer("numero")});
}

}  // namespace hipico
