#pragma once

#include "core/Recordset.h"
#include "core/SqlValue.h"

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

namespace hipico {

class Db;

// The writers of the positional inserts. Every "INSERT INTO `t` VALUES
// (NULL,...)" the program and its tests send is built here, from a row that
// names the column of each value: the names are the contract with the
// table's column order, and the schema test checks them against the tables.

// One positional insert: the values in the table's column order after its
// auto-increment key (written as NULL). For an INSERT ... SELECT a column
// takes an expression of the source row instead of a bound value.
class Insercion {
public:
    explicit Insercion(const char* tabla) : tabla_(tabla) {}
    Insercion& operator()(const char* columna, SqlValue valor);
    Insercion& desde(const char* columna, const char* expresion);

    const char* tabla() const { return tabla_; }
    QStringList columnas() const;
    const Params& valores() const { return valores_; }
    // The bound value of a column (NULL when the row has no such column).
    SqlValue valor(const char* columna) const;
    // "INSERT INTO `t` VALUES (NULL,?,...,?);"
    std::string sql() const;
    // "INSERT INTO `t` SELECT NULL,<expressions, ? for bound values> " + origen
    std::string sqlDesde(const std::string& origen) const;

private:
    const char* tabla_;
    std::vector<const char*> columnas_;
    std::vector<const char*> expresiones_;  // nullptr: a bound value
    Params valores_;
};

// Writes the row; gives the key its insert generated (the insert's own LAST_INSERT_ID).
long long insertar(Db& db, const Insercion& fila);
// The same in one round trip: the insert returns its own key column `clave`
// (INSERT ... RETURNING), the number the insert generated.
long long insertar(Db& db, const Insercion& fila, const char* clave);
// INSERT ... SELECT: one row per row of `origen` ("FROM ... WHERE ..."). The
// row's bound values come first, then `params`. Gives the rows written.
long long insertarDesde(Db& db, const Insercion& fila, const std::string& origen, const Params& params);

// ---- The rows the system writes ----

// ma_principal: a winner-bet ticket as the sale writes it; its code and sale
// keys are written once its number is known. `ficha` is the booth's sale
// token (NULL when empty).
struct BoletoGanador {
    long long carrera = 0, caballo = 0;
    double ganadores = 0;
    QString ch, grupo, hora, fecha;
    double cobrado = 0;
    int estatus = 0;
    QString fechaCobro = QStringLiteral("0");
    QString nuBoleto, subgrupo;
    QString ficha;
    Insercion insercion() const;
};

// bitacora: a winner ticket as the audit log keeps it, with the status it
// was given (5 voided; the desk also logs the payments and refunds it makes)
// and the reason and user. `taquilla` is the ticket's centre (ch).
struct AnotacionBitacora {
    long long numero = 0, carrera = 0, caballo = 0;
    double ganadores = 0;
    QString taquilla, grupo, hora, fecha, nuBoleto;
    double cobrado = 0;
    QString motivo, usuario;
    int estatus = 0;
    Insercion insercion() const;
};

// tablafija: a fixed-table ticket as the sale writes it (its code once its
// number is known); `ficha` is the booth's sale token (NULL when empty).
struct BoletoTablaFija {
    long long carrera = 0, caballo = 0;
    double tablas = 0, monto = 0;
    QString ch, grupo, hora, fecha;
    double cobrado = 0;
    int estatus = 0;
    QString nuBoleto;
    QString fechaCobro = QStringLiteral("0");
    QString ficha;
    Insercion insercion() const;
};

// bitacora_tf: a fixed-table ticket as the audit log keeps it, with the
// status it was given, the reason and the user; `taquilla` is its centre.
struct AnotacionTablaFija {
    long long numero = 0, carrera = 0, caballo = 0;
    double monto = 0, tablas = 0;
    QString taquilla, grupo, hora, fecha;
    int estatus = 0;
    QString nuBoleto;
    double cobrado = 0;
    QString fechaCobro, motivo, usuario;
    Insercion insercion() const;
};

// descargas: a lay-off bet of a group.
struct Descarga {
    QString fecha, hora, ch, grupo;
    long long carrera = 0, caballo = 0;
    double ganadores = 0, cobrado = 0;
    Insercion insercion() const;
};

// condicionados: the dividend a group pays on a horse, whatever its rule.
struct Condicionado {
    QString ch, grupo, subgrupo, fecha;
    long long carrera = 0, caballo = 0;
    double monto = 0;
    Insercion insercion() const;
};

// jugadas_clientes: a movement of a client's account (a play is a debit of
// type `tipo`, operation `operacion`, paid through `banco`, numbered by the
// ticket code).
struct MovimientoCliente {
    long long idCliente = 0;
    double monto = 0;
    QString tipo;
    int operacion = 0;
    long long idUsuario = 0;
    int banco = 0;
    QString nuOperacion, fecha, hora, observacion;
    Insercion insercion() const;
};

// usuarios: a user as the users window creates it; what the sign-in records
// (time, machine, address, version) starts empty.
struct UsuarioNuevo {
    QString usuario, clave, nombre, nivel, grupo, ch, estatus, fechaIngreso;
    Insercion insercion() const;
};

// rpt_jugadas_clientes (local report schema): one line of a client's
// statement, a row of the statement's query (ID, MONTO, FECHA, HORA,
// OPERACION, CLIENTE, TIPO, NUMERO, USUARIO, BANCO, observacion); texts are
// cut to the report table's widths and a bank operation number that is not
// a whole number is written as 0.
Insercion lineaEstadoCliente(const Row& movimiento);
// carreras_remate: a horse's row of an auction race as the board creates it:
// the wide row (five tables), every buyer, amount, pot and house column
// empty, the centre and the percentage stamped.
struct FilaRemate {
    QString fecha;
    long long carrera = 0;
    QString caballo;
    long long nuCaballo = 0;
    int retirado = 0;
    QString ch;
    double porcentaje = 0;
    Insercion insercion() const;
};
// macuares: a Macuare ticket as the sale writes it (picks v1..v7 in leg
// order, the combination text they make); its code is written once its
// number is known. `ficha` is the booth's sale token (NULL when empty).
struct BoletoMacuare {
    QString fecha, hora;
    double monto = 0;
    long long veces = 1;
    long long v[7] = {0, 0, 0, 0, 0, 0, 0};
    QString nombre, grupo, subgrupo, taquilla, combinacion;
    QString ficha;
    Insercion insercion() const;
};
// bitacora_mc: a Macuare ticket as its audit log keeps it, with the status
// it was given (5 voided), the reason and the user.
Insercion anotacionMacuare(const Row& boleto, const QString& motivo, const QString& usuario, int estatus);
// combinaciones_general: the first sale of a combination on a day, and its amount.
Insercion combinacionNueva(const QString& combinacion, const QString& fecha, double monto);
// Rows of one table in one statement: "INSERT INTO `t` VALUES (NULL,...),(NULL,...);".
// Gives the rows written.
long long insertarFilas(Db& db, const std::vector<Insercion>& filas);

// ventas_auditoria: the snapshot of a race's tickets, one row per ticket row
// of the INSERT ... SELECT, as the given game and currency; `monto` and
// `tablas` are taken from the given columns (or values) of the ticket.
Insercion auditoriaBoletos(int juego, int moneda, const char* monto, const char* tablas);

// rpt_resultadostaqs (local report schema): one booth's figures of a day
// ("DD-MM-YYYY"), the booth named in both `ch` and `taquilla`.
Insercion resultadoTaquilla(const QString& taquilla, const QString& fecha, double jugado, double cobrado,
                            double total, double porPagar);

}  // namespace hipico
