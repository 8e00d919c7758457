#pragma once

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
// INSERT ... SELECT: one row per row of `origen` ("FROM ... WHERE ..."). The
// row's bound values come first, then `params`. Gives the rows written.
long long insertarDesde(Db& db, const Insercion& fila, const std::string& origen, const Params& params);

// ---- The rows the system writes ----

// ma_principal: a winner-bet ticket as the sale writes it; its code and sale
// keys are written once its number is known.
struct BoletoGanador {
    long long carrera = 0, caballo = 0;
    double ganadores = 0;
    QString ch, grupo, hora, fecha;
    double cobrado = 0;
    int estatus = 0;
    QString fechaCobro = QStringLiteral("0");
    QString nuBoleto, subgrupo;
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

// ventas_auditoria: the snapshot of a race's winner tickets, one row per
// ma_principal row of the INSERT ... SELECT, as the given game and currency.
Insercion auditoriaGanadores(int juego, int moneda);

// rpt_resultadostaqs (local report schema): one booth's figures of a day
// ("DD-MM-YYYY"), the booth named in both `ch` and `taquilla`.
Insercion resultadoTaquilla(const QString& taquilla, const QString& fecha, double jugado, double cobrado,
                            double total, double porPagar);

}  // namespace hipico
