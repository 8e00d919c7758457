#include "masterdata/Maestro.h"

#include "core/Claves.h"
#include "core/Context.h"
#include "core/Guardia.h"
#include "core/Textos.h"

namespace hipico {

namespace {

using T = Campo::Tipo;

// A field left empty that need not be filled stores the column's empty value.
std::optional<SqlValue> vacio(const Campo& c) {
    switch (c.tipo) {
    case T::Texto:
    case T::Fecha: return SqlValue(QString());
    case T::Entero: return SqlValue(0);
    case T::Decimal: return SqlValue(0.0);
    default: return std::nullopt;
    }
}

std::string identificador(const QString& nombre) { return ("`" + nombre + "`").toStdString(); }

}  // namespace

Maestro::Maestro(Context& ctx, DescripcionMaestro descripcion) : ctx_(ctx), d_(std::move(descripcion)) {}

Maestro::~Maestro() = default;

QStringList Maestro::opciones(const QString& columna) {
    for (const Campo& c : d_.campos)
        if (c.columna == columna) return c.opciones;
    return {};
}

const Row& Maestro::registro() const {
    static const Row vacia;
    return registro_ ? *registro_ : vacia;
}

QString Maestro::claveActual() const { return registro_ ? registro_->text(d_.clave) : QString(); }

std::optional<Recordset> Maestro::listar(const QString& filtro) {
    return intentar(ctx_, d_.ventana, [&] { return consultaListado(ctx_.servidor(), filtro); });
}

std::optional<Recordset> Maestro::buscar() {
    const auto texto = ctx_.dialogs.ask(kTituloBuscar, d_.pedirBusqueda);
    if (!texto) return std::nullopt;
    auto filas = intentar(ctx_, d_.ventana, [&] { return consultaBusqueda(ctx_.servidor(), texto->trimmed()); });
    if (filas && filas->empty()) {
        ctx_.dialogs.inform(texto::TituloBusqueda, d_.noExiste);
        return std::nullopt;
    }
    return filas;
}

std::optional<ValoresCampos> Maestro::leer(const QString& clave) {
    const auto filas = intentar(ctx_, d_.ventana, [&] {
        return ctx_.servidor().query("SELECT * FROM " + identificador(d_.tabla) + " WHERE " +
                                         identificador(d_.clave) + " = ? ORDER BY 1 LIMIT 1",
                                     {clave});
    });
    if (!filas || filas->empty()) return std::nullopt;
    registro_ = filas->first();
    return valoresDe(*registro_, d_.campos);
}

ValoresCampos Maestro::nuevo() {
    registro_.reset();
    return valoresNuevos();
}

bool Maestro::guardar(const ValoresCampos& valores) { return escribir(valores, true); }

bool Maestro::modificar(const ValoresCampos& valores) {
    if (!registro_) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kSeleccioneRegistro);
        return false;
    }
    return escribir(valores, false);
}

std::optional<Negativa> Maestro::validar(const ValoresCampos& valores, bool nuevo, FilaMaestra& fila) {
    for (Campo c : d_.campos) {
        const QString texto = valores.value(c.columna);
        // A password left empty keeps the stored one.
        if (c.tipo == T::Clave && texto.isEmpty() && !nuevo) continue;
        if (!c.requerido && texto.trimmed().isEmpty()) {
            if (const auto v = vacio(c)) {
                fila.insert(c.columna, *v);
                continue;
            }
        }
        if (c.tipo == T::Lista) {
            c.opciones = opciones(c.columna);
            // The record keeps a value the list no longer offers.
            if (!nuevo && registro_) c.opciones << registro_->textOr(c.columna);
        }
        SqlValue valor;
        const QString negado = validarCampo(c, texto, valor);
        if (!negado.isEmpty()) return Negativa{texto::TituloVerifiqueIntente, negado};
        if (c.tipo == T::Clave) valor = guardarClave(texto, formaClaveConfigurada(ctx_.session));
        fila.insert(c.columna, valor);
    }
    return std::nullopt;
}

bool Maestro::escribir(ValoresCampos valores, bool nuevo) {
    // modificar never changes the key: it is the record's own.
    if (!nuevo) valores[d_.clave] = registro_->text(d_.clave);
    completar(valores);
    for (const Campo& c : d_.campos) {
        const bool claveGuardada = c.tipo == T::Clave && !nuevo;
        if (c.requerido && !claveGuardada && valores.value(c.columna).trimmed().isEmpty()) {
            ctx_.dialogs.refuse(texto::TituloInformacionSistema, kLlenarAmarillos);
            return false;
        }
    }
    std::optional<Negativa> negativa;
    QString clave = valores.value(d_.clave).trimmed();
    const bool escrito = proteger(ctx_, d_.ventana, [&] {
        FilaMaestra fila;
        negativa = validar(valores, nuevo, fila);
        if (negativa) return false;
        Db& db = ctx_.servidor();
        return db.inTransaction([&] {
            negativa = reglas(db, valores, nuevo);
            if (negativa) return false;
            if (nuevo)
                clave = insertar(db, fila);
            else
                actualizar(db, fila);
            return true;
        });
    });
    if (negativa) ctx_.dialogs.refuse(negativa->titulo, negativa->texto);
    if (!escrito) return false;
    leer(clave);
    ctx_.dialogs.inform(kTituloRegistros, nuevo ? texto::DatosAlmacenados : kDatosModificados);
    return true;
}

bool Maestro::eliminar() {
    if (!registro_) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kSeleccioneRegistro);
        return false;
    }
    const auto negativa = intentar(ctx_, d_.ventana, [&] { return reglasEliminar(ctx_.servidor()); });
    if (!negativa) return false;
    if (*negativa) {
        ctx_.dialogs.refuse((*negativa)->titulo, (*negativa)->texto);
        return false;
    }
    if (!ctx_.dialogs.confirm(texto::TituloConfirmar, kConfirmarEliminar, true)) return false;
    const QString clave = claveActual();
    const bool hecho = proteger(ctx_, d_.ventana, [&] {
        Db& db = ctx_.servidor();
        db.inTransaction([&] { borrar(db, clave); });
    });
    if (!hecho) return false;
    registro_.reset();
    ctx_.dialogs.inform(kTituloRegistros, kRegistroEliminado);
    return true;
}

QString Maestro::insertar(Db& db, const FilaMaestra& fila) {
    QStringList columnas, marcas;
    Params valores;
    for (auto it = fila.cbegin(); it != fila.cend(); ++it) {
        columnas << QLatin1Char('`') + it.key() + QLatin1Char('`');
        marcas << QStringLiteral("?");
        valores.push_back(it.value());
    }
    db.exec("INSERT INTO " + identificador(d_.tabla) + " (" + columnas.join(',').toStdString() + ") VALUES (" +
                marcas.join(',').toStdString() + ")",
            valores);
    return fila.contains(d_.clave) ? fila.value(d_.clave).toString() : QString::number(db.lastInsertId());
}

void Maestro::actualizar(Db& db, const FilaMaestra& fila) {
    QStringList asignaciones;
    Params valores;
    for (auto it = fila.cbegin(); it != fila.cend(); ++it) {
        if (it.key() == d_.clave) continue;
        asignaciones << QLatin1Char('`') + it.key() + QStringLiteral("` = ?");
        valores.push_back(it.value());
    }
    valores.push_back(claveActual());
    db.exec("UPDATE " + identificador(d_.tabla) + " SET " + asignaciones.join(',').toStdString() + " WHERE " +
                identificador(d_.clave) + " = ? LIMIT 1",
            valores);
}

void Maestro::borrar(Db& db, const QString& clave) {
    db.exec("DELETE FROM " + identificador(d_.tabla) + " WHERE " + identificador(d_.clave) + " = ? LIMIT 1", {clave});
}

}  // namespace hipico
