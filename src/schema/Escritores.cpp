#include "schema/Escritores.h"

#include "core/Db.h"
#include "core/Formato.h"

#include <cstring>

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

SqlValue Insercion::valor(const char* columna) const {
    std::size_t enlazado = 0;
    for (std::size_t i = 0; i < columnas_.size(); ++i) {
        if (expresiones_[i]) continue;
        if (std::strcmp(columnas_[i], columna) == 0) return valores_[enlazado];
        ++enlazado;
    }
    return {};
}

long long insertar(Db& db, const Insercion& fila) {
    db.exec(fila.sql(), fila.valores());
    return db.lastInsertId();
}

long long insertar(Db& db, const Insercion& fila, const char* clave) {
    std::string sql = fila.sql();
    if (!sql.empty() && sql.back() == ';') sql.pop_back();
    return Row::toInteger(db.scalar(sql + " RETURNING " + clave, fila.valores()));
}

long long insertarDesde(Db& db, const Insercion& fila, const std::string& origen, const Params& params) {
    Params todos = fila.valores();
    todos.insert(todos.end(), params.begin(), params.end());
    return db.exec(fila.sqlDesde(origen), todos);
}

long long insertarFilas(Db& db, const std::vector<Insercion>& filas) {
    if (filas.empty()) return 0;
    std::string sql = filas.front().sql();
    sql.pop_back();  // the ";"
    const std::string grupo = sql.substr(sql.find("(NULL"));
    Params valores = filas.front().valores();
    for (std::size_t i = 1; i < filas.size(); ++i) {
        sql += "," + grupo;
        valores.insert(valores.end(), filas[i].valores().begin(), filas[i].valores().end());
    }
    return db.exec(sql + ";", valores);
}

Insercion FilaRemate::insercion() const {
    return Insercion("carreras_remate")("fecha", fecha)("carrera", carrera)("caballo", caballo)(
        "nu_caballo", nuCaballo)("retirado", retirado)("mesa1", "")("tabla1", "0")("mesa2", "")("tabla2", 0)(
        "mesa3", "")("tabla3", 0)("mesa4", "")("tabla4", 0)("pote", 0)("tablacasa", 0)("invalidado", 0)("pote2", 0)(
        "tablacasa2", 0)("invalidado2", 0)("ch", ch)("monto_casa", 0)("monto_casa2", 0)("porcentaje", porcentaje)(
        "win", 0)("win2", 0)("segundolugar", 0)("tabla5", 0)("mesa5", "")("tablazo", 0);
}

Insercion BoletoGanador::insercion() const {
    return Insercion("ma_principal")("carrera", carrera)("caballo", caballo)("ganadores", ganadores)("ch", ch)(
        "grupo", grupo)("hora", hora)("fecha", fecha)("cobrado", cobrado)("estatus", estatus)("fecha_cobro", fechaCobro)(
        "nu_boleto", nuBoleto)("subgrupo", subgrupo)("llave", "0")("llave2", "0")("llave3", "0")("llave4", "0")(
        "llave5", "0")("llave6", "0")("ficha", ficha.isEmpty() ? SqlValue() : SqlValue(ficha));
}

Insercion AnotacionBitacora::insercion() const {
    return Insercion("bitacora")("numero", numero)("carrera", carrera)("caballo", caballo)("ganadores", ganadores)(
        "taquilla", taquilla)("grupo", grupo)("hora", hora)("fecha", fecha)("nu_boleto", nuBoleto)("cobrado", cobrado)(
        "motivo", motivo)("usuario", usuario)("estatus", estatus);
}

Insercion BoletoMacuare::insercion() const {
    return Insercion("macuares")("boleto", "")("fecha", fecha)("hora", hora)("monto", monto)("veces", veces)(
        "v1", v[0])("v2", v[1])("v3", v[2])("v4", v[3])("v5", v[4])("v6", v[5])("v7", v[6])("nombre", nombre)(
        "grupo", grupo)("subgrupo", subgrupo)("taquilla", taquilla)("combinacion", combinacion)("estatus", 0)(
        "confirmacion", 0)("cobrado", 0.0)("fecha_cobro", "0")("ficha", ficha.isEmpty() ? SqlValue() : SqlValue(ficha));
}

Insercion anotacionMacuare(const Row& b, const QString& motivo, const QString& usuario, int estatus) {
    return Insercion("bitacora_mc")("numero", b.integer("numero"))("boleto", b.text("boleto"))("fecha", b.text("fecha"))(
        "hora", b.text("hora"))("monto", b.number("monto"))("veces", b.integer("veces"))(
        "combinacion", b.text("combinacion"))("nombre", b.text("nombre"))("grupo", b.text("grupo"))(
        "taquilla", b.text("taquilla"))("cobrado", b.number("cobrado"))("estatus", estatus)("motivo", motivo)(
        "usuario", usuario);
}

Insercion combinacionNueva(const QString& combinacion, const QString& fecha, double monto) {
    return Insercion("combinaciones_general")("combinacion", combinacion)("fecha", fecha)("estatus", 0)("monto", monto);
}

Insercion BoletoTablaFija::insercion() const {
    return Insercion("tablafija")("carrera", carrera)("caballo", caballo)("tablas", tablas)("monto", monto)("ch", ch)(
        "grupo", grupo)("hora", hora)("fecha", fecha)("cobrado", cobrado)("estatus", estatus)("nu_boleto", nuBoleto)(
        "fecha_cobro", fechaCobro)("ficha", ficha.isEmpty() ? SqlValue() : SqlValue(ficha));
}

Insercion AnotacionTablaFija::insercion() const {
    return Insercion("bitacora_tf")("numero", numero)("carrera", carrera)("caballo", caballo)("monto", monto)(
        "tablas", tablas)("taquilla", taquilla)("grupo", grupo)("hora", hora)("fecha", fecha)("estatus", estatus)(
        "nu_boleto", nuBoleto)("cobrado", cobrado)("fecha_cobro", fechaCobro)("motivo", motivo)("usuario", usuario);
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

Insercion UsuarioNuevo::insercion() const {
    return Insercion("usuarios")("usuario", usuario)("clave", clave)("nombre", nombre)("nivel", nivel)("grupo", grupo)(
        "ch", ch)("estatus", estatus)("fecha_ingreso", fechaIngreso)("hora_ingreso", "")("mac", "")("ip_pc", "")(
        "version", "")("plantilla", "");
}

Insercion lineaEstadoCliente(const Row& m) {
    return Insercion("rpt_jugadas_clientes")("monto", m.number("MONTO"))("monto_tipo", m.text("OPERACION").left(10))(
        "tipo_operacion", m.text("TIPO").left(15))("fecha", m.text("FECHA"))("hora", m.text("HORA").left(25))(
        "cliente", m.text("CLIENTE").left(25))("banco", m.text("BANCO").left(25))(
        "nu_operacion", leerEntero(m.text("NUMERO"), 2147483647).value_or(0))(
        "motivo", m.text("observacion").left(15));
}

Insercion auditoriaBoletos(int juego, int moneda, const char* monto, const char* tablas) {
    return Insercion("ventas_auditoria")
        .desde("carrera", "carrera")
        .desde("caballo", "caballo")
        .desde("monto", monto)
        .desde("taquilla", "ch")
        .desde("grupo", "grupo")
        .desde("hora", "hora")
        .desde("estatus", "estatus")
        .desde("nu_boleto", "nu_boleto")
        .desde("cobrado", "cobrado")
        .desde("fecha_cobro", "fecha_cobro")("id_juego", juego)("id_moneda", moneda)
        .desde("tablas", tablas)
        .desde("puesto", "0");
}

Insercion resultadoTaquilla(const QString& taquilla, const QString& fecha, double jugado, double cobrado,
                            double total, double porPagar) {
    return Insercion("rpt_resultadostaqs")("ch", taquilla)("fecha", fecha)("jugado", jugado)("cobrado", cobrado)(
        "total", total)("taquilla", taquilla)("monto_porpagar", porPagar);
}

}  // namespace hipico
