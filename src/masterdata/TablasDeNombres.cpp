#include "masterdata/TablasDeNombres.h"

#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"

namespace hipico {

namespace {

std::string nombre(const char* identificador) { return std::string("`") + identificador + "`"; }

}  // namespace

DescripcionMaestro NombresMaestro::describir(const TablaDeNombres& t) {
    const QString etiqueta = QString::fromUtf8(t.etiqueta);
    return {QString::fromLatin1(t.ventana),
            QString::fromUtf8(t.titulo),
            QString::fromLatin1(t.tabla),
            QString::fromLatin1(t.clave),
            {campo::requerido(campo::textoLibre(t.nombre, t.etiqueta, etiqueta, t.largo))},
            {{QStringLiteral(" CODIGO "), QString::fromLatin1(t.clave)},
             {" " + etiqueta + " ", QString::fromLatin1(t.nombre)}},
            {},
            QStringLiteral("Ingrese el nombre a buscar "),
            texto::SinRegistros};
}

NombresMaestro::NombresMaestro(Context& ctx, const TablaDeNombres& tabla)
    : Maestro(ctx, describir(tabla)), t_(tabla) {}

Recordset NombresMaestro::consultaListado(Db& db, const QString&) {
    return db.query("SELECT * FROM " + nombre(t_.tabla) + " ORDER BY " + nombre(t_.clave));
}

Recordset NombresMaestro::consultaBusqueda(Db& db, const QString& texto) {
    return db.query("SELECT * FROM " + nombre(t_.tabla) + " WHERE " + nombre(t_.nombre) + " LIKE ? ORDER BY " +
                        nombre(t_.clave),
                    {patronContiene(texto)});
}

std::optional<Negativa> NombresMaestro::reglas(Db& db, const ValoresCampos& v, bool nuevo) {
    const Recordset iguales =
        db.query("SELECT " + nombre(t_.clave) + " FROM " + nombre(t_.tabla) + " WHERE " + nombre(t_.nombre) +
                     " = ? AND " + nombre(t_.clave) + " <> ? FOR UPDATE",
                 {v.value(QString::fromLatin1(t_.nombre)).trimmed(), nuevo ? -1LL : registro().integer(t_.clave)});
    if (!iguales.empty()) return Negativa{kTituloInformacion, kNombreRepetido};
    return std::nullopt;
}

std::optional<Negativa> NombresMaestro::reglasEliminar(Db& db) {
    const QVariant usado = db.scalar("SELECT id_jugadas FROM jugadas_clientes WHERE " + nombre(t_.movimiento) +
                                         " = ? LIMIT 1",
                                     {registro().integer(t_.clave)});
    if (!usado.isNull()) return Negativa{texto::TituloVerifiqueIntente, kNombreEnUso};
    return std::nullopt;
}

}  // namespace hipico
