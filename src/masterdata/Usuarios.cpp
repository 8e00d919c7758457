#include "masterdata/Usuarios.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "schema/Escritores.h"

namespace hipico {

namespace {

using namespace campo;

const QString kDatos = QStringLiteral("DATOS DEL USUARIO");
const QString kActivo = QStringLiteral("Activo");
const QString kBaja = QStringLiteral("Baja");

// What a level's listings leave out: some levels, and every group but the own.
struct Variante {
    QStringList ocultos;
    bool soloSuGrupo = false;
};

// The hidden administrator sees everyone; an administrator everyone but the
// hidden ones; a partner also not the supervisors; any other level only its
// own group, without the administrator levels and "AdminTF".
Variante varianteDe(const QString& n) {
    if (n == nivel::AdministradorOculto) return {};
    if (n == nivel::Administrador) return {{nivel::AdministradorOculto, kAdministradorO}};
    if (n == nivel::Socio) return {{nivel::AdministradorOculto, kAdministradorO, nivel::Supervisor}};
    return {{nivel::AdministradorOculto, kAdministradorO, nivel::Administrador, nivel::AdminTF}, true};
}

// The conditions of a variant after a statement's own, with their values.
std::string condiciones(const Variante& v, const QString& grupo, Params& params) {
    std::string sql;
    for (const QString& n : v.ocultos) {
        sql += " and u.nivel<>?";
        params.push_back(n);
    }
    if (v.soloSuGrupo) {
        sql += " and u.grupo=?";
        params.push_back(grupo);
    }
    return sql + " order by u.usuario";
}

const char* const kDesactivar = "update usuarios u,grupos g set u.estatus='Baja' where g.ch=? AND g.grupo=u.grupo ";
const char* const kActivar = "update usuarios u,grupos g set u.estatus='Activo' where g.ch=? AND g.grupo=u.grupo ";
const char* const kLiberar = "update usuarios u,grupos g set u.mac='',u.ip_pc='' where g.ch=? AND g.grupo=u.grupo ";

QString centroDe(Db& db, const QString& grupo) {
    return Row::toText(db.scalar("SELECT ch FROM grupos WHERE grupo = ? LIMIT 1", {grupo}));
}

}  // namespace

const QStringList& Usuarios::nivelesOfrecidos() {
    using namespace nivel;
    static const QStringList niveles{Taquilla, Remate,     TablaFija,     SupervisorTF,       Total,
                                     Gerente,  Supervisor, Administrador, AdministradorOculto};
    return niveles;
}

const DescripcionMaestro& Usuarios::descripcionUsuarios() {
    static const DescripcionMaestro d{
        QStringLiteral("Form_Usuarios"),
        QStringLiteral("USUARIOS DEL SISTEMA"),
        QStringLiteral("usuarios"),
        QStringLiteral("usuario"),
        {
            requerido(textoLibre("usuario", "USUARIO", kDatos, 45)),
            requerido(clave("clave", "CLAVE", kDatos, 45)),
            requerido(textoLibre("nombre", "NOMBRE", kDatos, 100)),
            requerido(lista("nivel", "NIVEL", kDatos, nivelesOfrecidos())),
            requerido(lista("grupo", "GRUPO", kDatos)),
            lista("estatus", "ESTATUS", kDatos, {kActivo, kBaja}),
            fecha("fecha_ingreso", "FECHA DE INGRESO", kDatos),
        },
        {
            {QStringLiteral(" USUARIO "), QStringLiteral("usuario")},
            {QStringLiteral(" NOMBRE "), QStringLiteral("nombre")},
            {QStringLiteral(" NIVEL "), QStringLiteral("nivel")},
            {QStringLiteral(" GRUPO "), QStringLiteral("grupo")},
            {QStringLiteral(" CENTRO HIPICO "), QStringLiteral("ch")},
            {QStringLiteral(" ESTATUS "), QStringLiteral("estatus")},
            {QStringLiteral(" F.INGRESO "), QStringLiteral("fecha_ingreso"), true},
        },
        QStringLiteral("CENTRO HIPICO"),
        QStringLiteral("Ingrese el grupo del usuario a buscar "),
        texto::SinRegistros,
    };
    return d;
}

Usuarios::Usuarios(Context& ctx) : Maestro(ctx, descripcionUsuarios()) {}

bool Usuarios::manejaCentros() const { return esAdministrador(ctx_.session.nivel); }

QStringList Usuarios::opciones(const QString& columna) {
    if (columna != QLatin1String("grupo")) return Maestro::opciones(columna);
    if (!esAdministrador(ctx_.session.nivel)) return {ctx_.session.grupo};
    QStringList out;
    for (const Row& r : ctx_.servidor().query("SELECT grupo FROM grupos ORDER BY grupo")) out << r.text("grupo");
    return out;
}

QStringList Usuarios::filtros() {
    QStringList out{texto::Todos};
    if (!esAdministrador(ctx_.session.nivel)) return out << ctx_.session.ch;
    proteger(ctx_, descripcion().ventana, [&] {
        for (const Row& r : ctx_.servidor().query("SELECT DISTINCT ch FROM grupos ORDER BY ch")) out << r.text("ch");
    });
    return out;
}

Recordset Usuarios::consultaListado(Db& db, const QString& filtro) {
    const Session& s = ctx_.session;
    Params params;
    if (filtro.isEmpty() || filtro == texto::Todos) {
        const std::string donde = condiciones(varianteDe(s.nivel), s.grupo, params);
        return db.query("select * from usuarios u where 1=1" + donde, params);
    }
    params.push_back(filtro);
    const std::string donde = condiciones(varianteDe(s.nivel), s.grupo, params);
    return db.query("SELECT * FROM usuarios u,grupos g Where g.ch = ? and g.grupo = u.grupo" + donde, params);
}

Recordset Usuarios::consultaBusqueda(Db& db, const QString& grupo) {
    Params params{grupo};
    const std::string donde = condiciones(varianteDe(ctx_.session.nivel), ctx_.session.grupo, params);
    return db.query("select * from usuarios u where u.grupo=?" + donde, params);
}

ValoresCampos Usuarios::valoresNuevos() {
    const QDate hoy = desdeFechaSql(ctx_.session.fecha);
    return {{"fecha_ingreso", fechaVista(hoy.isValid() ? hoy : ctx_.clock.today())},
            {"estatus", kActivo},
            {"nivel", nivel::Taquilla},
            {"grupo", ctx_.session.grupo}};
}

std::optional<Negativa> Usuarios::reglas(Db& db, const ValoresCampos& v, bool nuevo) {
    // The name is locked while it is checked, so two windows cannot both create it.
    const QString usuario = v.value("usuario").trimmed();
    const Recordset iguales =
        nuevo ? db.query("SELECT id_usuario FROM usuarios Where usuario=? FOR UPDATE", {usuario})
              : db.query("SELECT id_usuario FROM usuarios Where usuario=? and id_usuario<>? FOR UPDATE",
                         {usuario, registro().integer("id_usuario")});
    if (!iguales.empty()) return Negativa{kTituloInformacion, kUsuarioYaExiste};
    // Only the administrator levels give the administrator levels (or change
    // an administrator).
    const bool pideAdministrador = esAdministrador(v.value("nivel")) || (!nuevo && esAdministrador(registro().text("nivel")));
    if (!esAdministrador(ctx_.session.nivel) && pideAdministrador) return Negativa{kTituloDenegada, kNivelDenegado};
    return std::nullopt;
}

std::optional<Negativa> Usuarios::reglasEliminar(Db&) {
    const Session& s = ctx_.session;
    const Row& r = registro();
    if (r.integer("id_usuario") == s.idUsuario || r.text("usuario").compare(s.usuario, Qt::CaseInsensitive) == 0)
        return Negativa{texto::TituloVerifiqueIntente, kUsuarioPropio};
    if (!esAdministrador(s.nivel) && (esAdministrador(r.text("nivel")) || r.text("grupo") != s.grupo))
        return Negativa{kTituloDenegada, kNivelDenegado};
    return std::nullopt;
}

QString Usuarios::insertar(Db& db, const FilaMaestra& f) {
    UsuarioNuevo u;
    u.usuario = f.value("usuario").toString();
    u.clave = f.value("clave").toString();
    u.nombre = f.value("nombre").toString();
    u.nivel = f.value("nivel").toString();
    u.grupo = f.value("grupo").toString();
    u.ch = centroDe(db, u.grupo);
    u.estatus = f.value("estatus").toString();
    u.fechaIngreso = f.value("fecha_ingreso").toString();
    hipico::insertar(db, u.insercion());
    return u.usuario;
}

void Usuarios::actualizar(Db& db, const FilaMaestra& fila) {
    // The user's centre follows the group.
    FilaMaestra f = fila;
    f.insert("ch", centroDe(db, fila.value("grupo").toString()));
    Maestro::actualizar(db, f);
}

bool Usuarios::cambiarCentro(const QString& centro, const char* sql, const QString& titulo, const QString& pregunta) {
    if (!manejaCentros()) {
        ctx_.dialogs.refuse(titulo, texto::SinAcceso);
        return false;
    }
    if (centro.isEmpty() || centro == texto::Todos) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kSeleccioneCentro);
        return false;
    }
    if (!ctx_.dialogs.confirm(titulo, pregunta.arg(centro), true)) return false;
    if (!proteger(ctx_, descripcion().ventana, [&] { ctx_.servidor().exec(sql, {centro}); })) return false;
    ctx_.dialogs.inform(titulo, texto::CambiosRealizados);
    return true;
}

bool Usuarios::desactivarCentro(const QString& centro) {
    return cambiarCentro(centro, kDesactivar, kTituloUsuarios,
                         QStringLiteral("¿Desea dar de baja a todos los usuarios del centro hípico %1?"));
}

bool Usuarios::activarCentro(const QString& centro) {
    return cambiarCentro(centro, kActivar, kTituloUsuarios,
                         QStringLiteral("¿Desea activar a todos los usuarios del centro hípico %1?"));
}

bool Usuarios::liberarEquipos(const QString& centro) {
    return cambiarCentro(centro, kLiberar, kTituloLimpieza,
                         QStringLiteral("¿Desea liberar los equipos de todos los usuarios del centro hípico %1?"));
}

}  // namespace hipico
