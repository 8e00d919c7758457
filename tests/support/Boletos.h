#pragma once

// Tickets as the booth sells them, for the administration tests.
#include "core/Db.h"
#include "core/Formato.h"
#include "sales/TicketKeys.h"

#include <QDate>

namespace hipico::test {

// A sold ticket with its code and sale keys; returns its number.
inline long long venderBoleto(Db& db, const QDate& dia, long long carrera, long long caballo, double ganadores,
                              const QString& grupo, const QString& ch, int estatus = 0, double cobrado = 0) {
    db.exec("INSERT INTO `ma_principal` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
            {carrera, caballo, ganadores, ch, grupo, "10:00:00", fechaSql(dia), cobrado, estatus, "0", "", "S1", "0",
             "0", "0", "0", "0", "0"});
    const long long numero = db.lastInsertId();
    const LlavesVenta k = llavesVenta(numero, caballo, ganadores, carrera, grupo);
    db.exec("update ma_principal set nu_boleto=?,llave=?,llave2=?,llave5=? Where numero = ? limit 1",
            {codigoBoleto(grupo, dia, numero), k.llave, k.llave2, k.llave5, numero});
    return numero;
}

inline Row filaBoleto(Db& db, long long numero) {
    return db.query("SELECT * FROM ma_principal WHERE numero = ?", {numero}).first();
}

// The ticket's status and payout, for short comparisons.
inline QPair<long long, double> estado(Db& db, long long numero) {
    const Row r = filaBoleto(db, numero);
    return {r.integer("estatus"), r.number("cobrado")};
}

// Every ticket row of a race, as text, to see that nothing moved.
inline QStringList fotoCarrera(Db& db, long long carrera) {
    QStringList out;
    for (const Row& r : db.query("SELECT * FROM ma_principal WHERE carrera = ? ORDER BY numero", {carrera})) {
        QStringList campos;
        for (const QVariant& v : r.values()) campos << Row::toText(v);
        out << campos.join('|');
    }
    for (const Row& r : db.query("SELECT * FROM descargas WHERE carrera = ? ORDER BY id_descarga", {carrera})) {
        QStringList campos;
        for (const QVariant& v : r.values()) campos << Row::toText(v);
        out << campos.join('|');
    }
    return out;
}

}  // namespace hipico::test
