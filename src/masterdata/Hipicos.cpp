#include "masterdata/Hipicos.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Openers.h"
#include "core/Textos.h"

namespace hipico {

namespace {

using namespace campo;

// The system's fixed security key of the transfer.
const QString kLlaveTransferencia = QStringLiteral("pqr482");

constexpr double kTope = 1e9;

const QString kGrupo = QStringLiteral("GRUPO");
const QString kEmpresa = QStringLiteral("EMPRESA");
const QString kJuegos = QStringLiteral("JUEGOS Y PORCENTAJES");
const QString kSubasta = QStringLiteral("SUBASTA");

const char* const kListado =
    "SELECT id_grupo,ch,contacto,telefono,grupo,fecha_ingreso,tablazo,por_ch,por_casa,por_admin FROM grupos order by ch, grupo";
const char* const kListadoSubgrupo =
    "SELECT g.id_grupo,g.ch,g.contacto,g.telefono,g.grupo,g.fecha_ingreso,g.fecha_salida,g.por_ch,g.por_casa,"
    "g.por_admin FROM grupos g,subgrupos s where  g.subgrupo=s.subgrupo and  s.nombre LIKE ? ORDER BY g.ch, g.grupo";
const char* const kBusqueda =
    "SELECT id_grupo,ch,contacto,telefono,grupo,fecha_ingreso,tablazo,por_ch,por_casa,por_admin FROM grupos where ch "
    "LIKE ?  or contacto LIKE ? or grupo LIKE ? or telefono  LIKE ?";

// What a centre's group carries to the betting-centre server; a text it
// lacks goes as "N/A".
const char* const kTextosTransferidos[] = {"ch", "contacto", "telefono", "grupo", "fecha_ingreso", "subgrupo"};
const char* const kNumerosTransferidos[] = {"subastas", "ganadores", "tablafija", "macuare"};

}  // namespace

const DescripcionMaestro& Hipicos::descripcionHipicos() {
    static const DescripcionMaestro d{
        QStringLiteral("Form_Hipicos"),
        QStringLiteral("CENTROS HIPICOS Y GRUPOS"),
        QStringLiteral("grupos"),
        QStringLiteral("grupo"),
        {
            requerido(textoLibre("grupo", "INICIALES DEL GRUPO", kGrupo, 10)),
            requerido(textoLibre("ch", "CENTRO HIPICO", kGrupo, 45)),
            lista("subgrupo", "SUBGRUPO", kGrupo),
            requerido(textoLibre("contacto", "CONTACTO", kGrupo, 100)),
            textoLibre("telefono", "TELEFONO", kGrupo, 45),
            requerido(fecha("fecha_ingreso", "FECHA DE INGRESO", kGrupo)),
            fecha("fecha_salida", "FECHA DE SALIDA", kGrupo),
            textoLibre("name_empresa", "EMPRESA", kEmpresa, 100),
            textoLibre("rif_empresa", "RIF", kEmpresa, 45),
            textoLibre("direccion_empresa", "DIRECCION", kEmpresa, 200),
            textoLibre("correo", "CORREO", kEmpresa, 100),
            textoLibre("encargado", "ENCARGADO", kEmpresa, 100),
            textoLibre("telefono_enc", "TELEFONO DEL ENCARGADO", kEmpresa, 45),
            interruptor("ganadores", "VENDE GANADORES", kJuegos),
            interruptor("tablafija", "VENDE TABLA FIJA", kJuegos),
            interruptor("macuare", "VENDE MACUARE", kJuegos),
            entero("subastas", "MESAS DE SUBASTA (0 = NO REMATA)", kJuegos, 0, 10),
            interruptor("ticket_cobro", "IMPRIME RECIBO DE COBRO", kJuegos),
            entero("cupoviptf", "CUPO VIP DE TABLA FIJA", kJuegos, 0, kTope),
            decimal("por_ch", "PORCENTAJE DEL CENTRO", kJuegos, 0, 100),
            decimal("por_casa", "PORCENTAJE DE LA CASA", kJuegos, 0, 100),
            decimal("por_admin", "PORCENTAJE DEL ADMINISTRADOR", kJuegos, 0, 100),
            decimal("por_remate", "PORCENTAJE DEL REMATE", kSubasta, 0, 100),
            decimal("por_rematador", "PORCENTAJE DEL REMATADOR", kSubasta, 0, 100),
            decimal("tablazo", "TABLAZO", kSubasta, 0, kTope),
            decimal("tablaz1", "TABLAZO 1", kSubasta, 0, kTope),
            decimal("tablaz2", "TABLAZO 2", kSubasta, 0, kTope),
            decimal("tablaz3", "TABLAZO 3", kSubasta, 0, kTope),
            decimal("tablaz4", "TABLAZO 4", kSubasta, 0, kTope),
        },
        {
            {QStringLiteral(" CONTACTO "), QStringLiteral("contacto")},
            {QStringLiteral(" TELEFONO "), QStringLiteral("telefono")},
            {QStringLiteral(" INICIALES "), QStringLiteral("grupo")},
            {QStringLiteral(" F.INGRESO "), QStringLiteral("fecha_ingreso"), true},
            {QStringLiteral(" F.SALIDA "), QStringLiteral("fecha_salida"), true},
            {QStringLiteral(" TABLAZO "), QStringLiteral("tablazo")},
            {QStringLiteral(" POR CH "), QStringLiteral("por_ch")},
            {QStringLiteral(" POR CASA "), QStringLiteral("por_casa")},
            {QStringLiteral(" POR ADMIN "), QStringLiteral("por_admin")},
        },
        QStringLiteral("SUBGRUPO"),
        QStringLiteral("Ingrese el nombre de la grupo  a buscar "),
        kGrupoNoExiste,
    };
    return d;
}

Hipicos::Hipicos(Context& ctx) : Maestro(ctx, descripcionHipicos()) {}

QStringList Hipicos::opciones(const QString& columna) {
    if (columna != QLatin1String("subgrupo")) return Maestro::opciones(columna);
    QStringList out{kSinSubgrupo};
    for (const Row& r : ctx_.servidor().query("SELECT subgrupo FROM subgrupos ORDER BY subgrupo"))
        out << r.text("subgrupo");
    return out;
}

QStringList Hipicos::filtros() {
    QStringList out{texto::Todos};
    proteger(ctx_, descripcion().ventana, [&] {
        for (const Row& r : ctx_.servidor().query("SELECT DISTINCT nombre FROM subgrupos ORDER BY nombre"))
            out << r.text("nombre");
    });
    return out;
}

Recordset Hipicos::consultaListado(Db& db, const QString& filtro) {
    if (filtro.isEmpty() || filtro == texto::Todos) return db.query(kListado);
    return db.query(kListadoSubgrupo, {patronContiene(filtro)});
}

Recordset Hipicos::consultaBusqueda(Db& db, const QString& texto) {
    const QString patron = patronContiene(texto);
    return db.query(kBusqueda, {patron, patron, patron, patron});
}

ValoresCampos Hipicos::valoresNuevos() {
    const QDate hoy = desdeFechaSql(ctx_.session.fecha);
    return {{"fecha_ingreso", fechaVista(hoy.isValid() ? hoy : ctx_.clock.today())},
            {"subgrupo", kSinSubgrupo},
            {"ganadores", "1"}};
}

void Hipicos::completar(ValoresCampos& valores) {
    if (valores.value("subgrupo").trimmed().isEmpty()) valores["subgrupo"] = kSinSubgrupo;
}

std::optional<Negativa> Hipicos::reglas(Db& db, const ValoresCampos& valores, bool nuevo) {
    if (nuevo && !db.query("SELECT grupo FROM grupos WHERE grupo = ? FOR UPDATE", {valores.value("grupo").trimmed()})
                      .empty())
        return Negativa{kTituloInformacion, kGrupoYaExiste};
    return std::nullopt;
}

std::optional<Negativa> Hipicos::reglasEliminar(Db&) {
    if (registro().text("grupo").compare(ctx_.session.grupo, Qt::CaseInsensitive) == 0)
        return Negativa{texto::TituloVerifiqueIntente, kGrupoPropio};
    return std::nullopt;
}

void Hipicos::borrar(Db& db, const QString& grupo) {
    // The group, then everything that hangs on its centre, in this order.
    const QString centro = registro().text("ch");
    db.exec("DELETE FROM grupos WHERE grupo=? limit 1;", {grupo});
    db.exec("DELETE FROM venta_cupo_tf WHERE ch=?", {centro});
    db.exec("DELETE FROM venta_cupo_ganadores WHERE ch=?", {centro});
    db.exec("DELETE FROM usuarios WHERE grupo=?;", {grupo});
    db.exec("DELETE FROM dividendos WHERE ch=?;", {centro});
}

bool Hipicos::transferir() {
    if (!ctx_.dialogs.confirm(texto::TituloConfirmar, kTransferir, true)) return false;
    const auto llave = ctx_.dialogs.ask(texto::TituloSeguridad, kClaveSeguridad);
    if (!llave) return false;
    if (*llave != kLlaveTransferencia) {
        ctx_.dialogs.refuse(texto::TituloSeguridad, kClaveSeguridadErrada);
        return false;
    }
    const bool hecho = proteger(ctx_, descripcion().ventana, [&] {
        const QString conexion =
            Row::toText(ctx_.servidor().scalar("SELECT conexion FROM configuracion")).trimmed();
        std::shared_ptr<Db> otro = conexion.isEmpty() ? ctx_.cnServidor : Db::open(conexion);
        const Recordset grupos = otro->query("SELECT * FROM grupos");
        ConectarHipicos(ctx_);
        Db& destino = ctx_.hipicos();
        destino.inTransaction([&] {
            for (const Row& g : grupos) {
                Params valores;
                for (const char* c : kTextosTransferidos) {
                    const QString v = g.textOr(c).trimmed();
                    valores.push_back(v.isEmpty() ? kSinSubgrupo : v);
                }
                for (const char* c : kNumerosTransferidos) valores.push_back(g.integerOr(c));
                // A group transferred again replaces its earlier copy.
                destino.exec("DELETE FROM centroshipicos WHERE grupo = ?", {valores[3]});
                destino.exec("INSERT INTO centroshipicos (ch, contacto, telefono, grupo, fecha_ingreso, subgrupo, "
                             "subastas, ganadores, tablafija, macuare, estatus) VALUES (?,?,?,?,?,?,?,?,?,?,'Activo')",
                             valores);
            }
        });
        AbrirCentrosHipicos(ctx_);
    });
    if (hecho) ctx_.dialogs.inform(kTituloTransferencia, kTransferidos);
    return hecho;
}

}  // namespace hipico
