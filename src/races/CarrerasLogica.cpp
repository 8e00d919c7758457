#include "races/CarrerasLogica.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Openers.h"
#include "core/Textos.h"
#include "races/Hipodromos.h"

#include <algorithm>
#include <utility>

namespace hipico {

namespace {

const QString kTituloCaballos = QStringLiteral("Mantenimiento de Caballos");
const QString kTituloMantenimiento = QStringLiteral("Mantenimiento del Sistema");
const QString kTituloTransferencia = QStringLiteral("Administración de Sistemas");
// A horse's name in carreras.caballo and caballos.nombre.
constexpr int kLargoNombre = 100;

Row configuracion(Context& ctx) {
    AbrirConfiguracion(ctx);
    return ctx.rs(QStringLiteral("rsConfiguracion")).first();
}

}  // namespace

QStringList CarrerasLogica::hipodromos() { return nombresHipodromos(ctx_, false); }

QString CarrerasLogica::hipodromoActual() {
    const long long id = configuracion(ctx_).integerOr(QStringLiteral("id_hipodromo"));
    const Recordset& rs = ctx_.rs(QStringLiteral("rsHipodromos"));
    const int i = rs.find(QStringLiteral("id_hipodromo"), QString::number(id));
    return i < 0 ? QString() : rs[i].text(QStringLiteral("hipodromo"));
}

bool CarrerasLogica::aceptar(const EntradaCaballo& e) {
    const QString fecha = fechaSql(e.fecha);
    const double apuestaMaxWin = configuracion(ctx_).number(QStringLiteral("apuesta_max_win"));
    const std::optional<int> hipodromo = idHipodromo(ctx_, e.hipodromo);
    if (!hipodromo) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueNuevamente, texto::DebeSeleccionarHipodromo);
        return false;
    }
    // The boxes only take digits; an empty box is stored as 0. Anything else
    // (a number too long for the column) is refused.
    const std::optional<int> carrera = numeroCaja(e.carrera);
    const std::optional<int> numero = numeroCaja(e.numero);
    if (!carrera || !numero) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueNuevamente,
                            QStringLiteral("EL NUMERO DE CARRERA O DE CABALLO NO ES VALIDO"));
        return false;
    }
    if (const QString largo = textoDemasiadoLargo(QStringLiteral("EL NOMBRE DEL CABALLO"), e.caballo, kLargoNombre);
        !largo.isEmpty()) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueNuevamente, largo);
        return false;
    }
    Db& db = ctx_.servidor();
    db.exec("INSERT INTO carreras (fecha, carrera, caballo, nu_caballo, retirado, id_hipodromo, apuesta_max_win, "
            "valor_tf, estado) VALUES (?, ?, ?, ?, 0, ?, ?, 0, 0)",
            {fecha, *carrera, e.caballo, *numero, *hipodromo, apuestaMaxWin});
    db.exec("INSERT INTO caballos (nombre) VALUES (?)", {e.caballo});
    return true;
}

Recordset CarrerasLogica::buscarCaballos(const QString& texto) {
    // What was typed matches literally: "%" and "_" are letters of a name here.
    return ctx_.servidor().query("SELECT nombre FROM caballos Where nombre like concat('%', ?, '%') ESCAPE '!'",
                                 {literalLike(texto)});
}

bool CarrerasLogica::eliminarCaballo(const QString& nombre) {
    if (nombre.trimmed().isEmpty()) {
        ctx_.dialogs.refuse(kTituloCaballos, QStringLiteral("DEBE INDICAR EL NOMBRE DEL CABALLO A ELIMINAR"));
        return false;
    }
    // "The first match" is the oldest name: the order makes it the same row on
    // every server (and on every node of a cluster).
    ctx_.servidor().exec(
        "DELETE  FROM caballos Where nombre like concat('%', ?, '%') ESCAPE '!' ORDER BY id_caballo LIMIT 1",
        {literalLike(nombre)});
    ctx_.dialogs.inform(kTituloCaballos, QStringLiteral("Caballo Eliminado con Exito"));
    return true;
}

Recordset CarrerasLogica::llenarGrilla(const QDate& fecha, const QString& carrera) {
    const std::optional<int> n = numeroCaja(carrera);
    if (!n) return {};
    return ctx_.servidor().query("SELECT id_carrera,nu_caballo,caballo FROM carreras Where carrera = ? and fecha = ?",
                                 {*n, fechaSql(fecha)});
}

Recordset CarrerasLogica::llenarGrillaHipodromo(const QDate& fecha, const QString& carrera, const QString& hipodromo) {
    const std::optional<int> n = numeroCaja(carrera);
    const std::optional<int> id = idHipodromo(ctx_, hipodromo);
    if (!n || !id) return {};
    return ctx_.servidor().query(
        "SELECT id_carrera,nu_caballo,caballo FROM carreras Where carrera = ? and fecha = ? and id_hipodromo = ?",
        {*n, fechaSql(fecha), *id});
}

bool CarrerasLogica::transferirCarreras(const QDate& desde, const QDate& hasta) {
    const Row conf = configuracion(ctx_);
    const double apuestaMaxWin = conf.number(QStringLiteral("apuesta_max_win"));
    const double cupoTf = conf.number(QStringLiteral("cupo_tf"));
    const QString fecha = fechaSql(desde);
    Db& db = ctx_.servidor();

    if (!db.query("SELECT id_carrera FROM carreras Where fecha = ? LIMIT 1", {fecha}).empty() &&
        !ctx_.dialogs.confirm(QStringLiteral("VERIFICACION DE LAS CARRERAS"),
                              QStringLiteral("Esta conexion ya tiene las Carreras,Desea Cargalas de Nuevo?"), true,
                              Icon::Question))
        return false;

    ConectarHipicos(ctx_);
    const Recordset origen =
        ctx_.hipicos().query("select * from carreras where fecha between ? and ?", {fecha, fechaSql(hasta)});
    if (origen.empty()) {
        ctx_.dialogs.refuse(kTituloTransferencia, QStringLiteral("NO HAY CARRERAS PARA TRANSFERIR EN ESAS FECHAS"));
        return false;
    }

    // The current race becomes the first race of the copied card.
    std::pair<QString, long long> primera{origen[0].text(QStringLiteral("fecha")),
                                          origen[0].integer(QStringLiteral("carrera"))};
    for (const Row& r : origen)
        primera = std::min(primera, {r.text(QStringLiteral("fecha")), r.integer(QStringLiteral("carrera"))});

    // All or nothing: a failed copy leaves no half card behind.
    db.inTransaction([&] {
        for (const Row& r : origen) {
            db.exec("INSERT INTO carreras (fecha, carrera, caballo, nu_caballo, retirado, retirado_tf, favorito, "
                    "id_hipodromo, apuesta_max_win, apuesta_max_tf, valor_tf, estado, venta, venta_tf, venta_rm) "
                    "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0, 1, 1, 1)",
                    {r.text(QStringLiteral("fecha")), r.integer(QStringLiteral("carrera")),
                     r.text(QStringLiteral("caballo")), r.integer(QStringLiteral("nu_caballo")),
                     r.integer(QStringLiteral("retirado")), r.integer(QStringLiteral("retirado")),
                     r.integer(QStringLiteral("favorito")), r.integer(QStringLiteral("id_hipodromo")), apuestaMaxWin,
                     cupoTf});
        }
        db.exec("UPDATE configuracion SET carrera = ?, fecha = ?", {primera.second, fecha});
    });
    ctx_.dialogs.inform(kTituloTransferencia, QStringLiteral("Carreras Transferidas con Exito"));
    return true;
}

void CarrerasLogica::eliminarCarrerasViejas(const QDate& corte) {
    Db& db = ctx_.servidor();
    const QString fecha = fechaSql(corte);
    db.exec("DELETE  FROM carreras Where fecha < ?", {fecha});
    db.exec("DELETE  FROM condicionados Where fecha < ?", {fecha});
    ctx_.dialogs.inform(kTituloMantenimiento, QStringLiteral("Carreras Eliminadas con Exito"));
}

void CarrerasLogica::eliminarRematesViejos(const QDate& corte) {
    Db& db = ctx_.servidor();
    const QString fecha = fechaSql(corte);
    db.exec("DELETE  FROM bitacora Where fecha < ?", {fecha});
    db.exec("DELETE  FROM carreras_remate Where fecha < ?", {fecha});
    db.exec("DELETE  FROM descargas Where fecha < ?", {fecha});
    ctx_.dialogs.inform(kTituloMantenimiento, QStringLiteral("Remates,Bitacora,Descargas Eliminadas con Exito"));
}

void CarrerasLogica::eliminarBoletosViejos(const QDate& corte) {
    ctx_.servidor().exec("DELETE  FROM ventas_ganadores Where fecha < ?", {fechaSql(corte)});
    ctx_.dialogs.inform(kTituloMantenimiento, QStringLiteral("Los Boletos Viejos han sido eliminados con exito"));
}

long long CarrerasLogica::eliminarCarrera(const QDate& fecha, const QString& carrera, const QString& hipodromo) {
    const std::optional<int> n = numeroCaja(carrera);
    const std::optional<int> id = idHipodromo(ctx_, hipodromo);
    if (!n || !id) return 0;
    return ctx_.servidor().exec("DELETE  FROM carreras Where fecha = ? and carrera=? and id_hipodromo=?",
                                {fechaSql(fecha), *n, *id});
}

}  // namespace hipico
