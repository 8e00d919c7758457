#include "schema/Escritores.h"

#include "core/Db.h"

namespace hipico {

Insercion& Insercion::operator()(const char* columna, SqlValue valor) {
    columnas_.push_back(columna);
    expresiones_.push_back(nullptr);
    valores_.push_back(std::move(valor));
    return *this;
}

Insercion& Insercion::desde(const char* columna, const char* expresion) {
    columnas_.push_back(columna);
    expresiones_.push_back(expresion);
    return *this;
}

QStringList Insercion::columnas() const {
    QStringList out;
    for (const char* c : columnas_) out << QString::fromLatin1(c);
    return out;
}

std::string Insercion::sql() const {
    std::string s = std::string("INSERT INTO `") + tabla_ + "` VALUES (NULL";
    for (std::size_t i = 0; i < columnas_.size(); ++i) s += ",?";
    return s + ");";
}

std::string Insercion::sqlDesde(const std::string& origen) const {
    std::string s = std::string("INSERT INTO `") + tabla_ + "` SELECT NULL";
    for (const char* e : expresiones_) s += std::string(",") + (e ? e : "?");
    return s + " " + origen;
}

long long insertar(Db& db, const Insercion& fila) {
    db.exec(fila.sql(), fila.valores());
    return db.lastInsertId();
}

long long insertarDesde(Db& db, const Insercion& fila, const std::string& origen, const Params& params) {
    Params todos = fila.valores();
    todos.insert(todos.end(), params.begin(), params.end());
    return db.exec(fila.sqlDesde(origen), todos);
}

Insercion BoletoGanador::insercion() const {
    return Insercion("ma_principal")("carrera", carrera)("caballo", caballo)("ganadores", ganadores)("ch", ch)(
        "grupo", grupo)("hora", hora)("fecha", fecha)("cobrado", cobrado)("estatus", estatus)("fecha_cobro", fechaCobro)(
        "nu_boleto", nuBoleto)("subgrupo", subgrupo)("llave", "0")("llave2", "0")("llave3", "0")("llave4", "0")(
        "llave5", "0")("llave6", "0");
}

Insercion AnotacionBitacora::insercion() const {
    return Insercion("bitacora")("numero", numero)("carrera", carrera)("caballo", caballo)("ganadores", ganadores)(
        "taquilla", taquilla)("grupo", grupo)("hora", hora)("fecha", fecha)("nu_boleto", nuBoleto)("cobrado", cobrado)(
        "motivo", motivo)("usuario", usuario)("estatus", estatus);
}

Insercion Descarga::insercion() const {
    return Insercion("descargas")("fecha", fecha)("hora", hora)("ch", ch)("grupo", grupo)("carrera", carrera)(
        "caballo", caballo)("ganadores", ganadores)("cobrado", cobrado);
}

Insercion Condicionado::insercion() const {
    return Insercion("condicionados")("ch", ch)("grupo", grupo)("subgrupo", subgrupo)("fecha", fecha)(
        "carrera", carrera)("caballo", caballo)("montocond", monto);
}

Insercion MovimientoCliente::insercion() const {
    return Insercion("jugadas_clientes")("id_cliente", idCliente)("monto", monto)("monto_tipo", tipo)(
        "tipo_operacion", operacion)("id_usuario", idUsuario)("id_banco", banco)("nu_operacion", nuOperacion)(
        "fecha", fecha)("hora", hora)("observacion", observacion);
}

Insercion auditoriaGanadores(int juego, int moneda) {
    return Insercion("ventas_auditoria")
        .desde("carrera", "carrera")
        .desde("caballo", "caballo")
        .desde("monto", "ganadores")
        .desde("taquilla", "ch")
        .desde("grupo", "grupo")
        .desde("hora", "hora")
        .desde("estatus", "estatus")
        .desde("nu_boleto", "nu_boleto")
        .desde("cobrado", "cobrado")
        .desde("fecha_cobro", "fecha_cobro")("id_juego", juego)("id_moneda", moneda)
        .desde("tablas", "0")
        .desde("puesto", "0");
}

Insercion resultadoTaquilla(const QString& taquilla, const QString& fecha, double jugado, double cobrado,
                            double total, double porPagar) {
    return Insercion("rpt_resultadostaqs")("ch", taquilla)("fecha", fecha)("jugado", jugado)("cobrado", cobrado)(
        "total", total)("taquilla", taquilla)("monto_porpagar", porPagar);
}

}  // namespace hipico
