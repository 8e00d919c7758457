#pragma once

// Tickets for the tests: sold through the program's own writer, settled by
// the program's own results processing.
#include "admin/Escritorio.h"
#include "admin/ProcesoCarrera.h"
#include "core/Context.h"
#include "core/Dialogs.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "sales/Juego.h"
#include "sales/TicketKeys.h"
#include "schema/Escritores.h"

#include <QDate>
#include <QtTest>

namespace hipico::test {

// A ticket written for a test: its number (what most tests keep) and its code.
struct BoletoDePrueba {
    long long numero = 0;
    QString codigo;
    operator long long() const { return numero; }
};

// The desk's selection for a test: the working day's race on the first
// track, a centre and a group (or every one), inside a scope.
inline Seleccion seleccionDePrueba(const Context& ctx, long long carrera, const QString& centro = "TODOS",
                                   const QString& grupo = "TODOS", const Alcance& alcance = {}) {
    Seleccion s = seleccionInicial(ctx);
    s.hipodromo = "LA RINCONADA";
    s.carrera = carrera;
    s.centro = centro;
    s.grupo = grupo;
    s.alcance = alcance;
    return s;
}

// The last box shown: its title, text and icon.
inline void esperarCaja(const ScriptedDialogs& d, const QString& titulo, const QString& texto,
                        Icon icono = Icon::Critical) {
    QVERIFY(d.count() > 0);
    QCOMPARE(d.last().title, titulo);
    QCOMPARE(d.last().text, texto);
    QCOMPARE(d.last().icon, icono);
}

// A winner ticket as the booth sells it: the row through the writer of
// ma_principal, then its code (prefixed by the group) and its sale keys.
inline BoletoDePrueba venderBoleto(Db& db, const QDate& dia, long long carrera, long long caballo, double ganadores,
                                   const QString& grupo, const QString& ch, int estatus = 0, double cobrado = 0) {
    const BoletoGanador b{carrera, caballo, ganadores, ch, grupo, "10:00:00", fechaSql(dia), cobrado, estatus, "0", "",
                          "S1", ""};
    const long long numero = insertar(db, b.insercion());
    const QString codigo = codigoBoleto(grupo, dia, numero);
    const LlavesVenta k = llavesVenta(numero, caballo, ganadores, carrera, grupo);
    db.exec("update ma_principal set nu_boleto=?,llave=?,llave2=?,llave5=? Where numero = ? limit 1",
            {codigo, k.llave, k.llave2, k.llave5, numero});
    return {numero, codigo};
}

// A fixed-table ticket as the booth sells it: the row through the writer of
// tablafija, then its code (prefix "2").
inline BoletoDePrueba venderTablas(Db& db, const QDate& dia, long long carrera, long long caballo, double tablas,
                                   double monto, const QString& grupo, const QString& ch, int estatus = 0,
                                   double cobrado = 0) {
    BoletoTablaFija b;
    b.carrera = carrera;
    b.caballo = caballo;
    b.tablas = tablas;
    b.monto = monto;
    b.ch = ch;
    b.grupo = grupo;
    b.hora = QStringLiteral("10:00:00");
    b.fecha = fechaSql(dia);
    b.cobrado = cobrado;
    b.estatus = estatus;
    const long long numero = insertar(db, b.insercion());
    const QString codigo = codigoBoleto("2", dia, numero);
    db.exec("update tablafija set nu_boleto=? Where numero = ? limit 1", {codigo, numero});
    return {numero, codigo};
}

// Processes a race's result as the desk does, every group paying the
// official dividend: winners get their payout and result keys.
inline ResultadoProceso liquidar(Db& db, const QString& fecha, long long carrera, long long caballo, double dividendo) {
    PeticionProceso p;
    p.fecha = fecha;
    p.carrera = carrera;
    p.idHipodromo = Row::toInteger(db.scalar("SELECT id_hipodromo FROM configuracion"));
    p.centro = QStringLiteral("TODOS");
    p.ganadores << GanadorOficial{caballo, dividendo};
    p.pagarOficial = true;
    return procesarCarrera(db, p);
}

// The ticket kept in its group's copy, as the day's closing keeps it.
inline void copiarAlGrupo(Db& db, const Juego& juego, const QString& codigo) {
    db.exec(QString("INSERT INTO %1 SELECT NULL, m.* FROM %2 m WHERE %3 = ?")
                .arg(juego.copia, juego.tabla, juego.codigo)
                .toStdString(),
            {codigo});
}

inline Row filaBoleto(Db& db, long long numero) {
    return db.query("SELECT * FROM ma_principal WHERE numero = ?", {numero}).first();
}

// The ticket's status and payout, for short comparisons.
inline QPair<long long, double> estado(Db& db, long long numero) {
    const Row r = filaBoleto(db, numero);
    return {r.integer("estatus"), r.number("cobrado")};
}

}  // namespace hipico::test
