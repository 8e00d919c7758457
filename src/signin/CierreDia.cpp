#include "signin/CierreDia.h"

#include "core/Context.h"
#include "core/Diario.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Session.h"
#include "subastas/Liquidacion.h"

namespace hipico {

namespace {

// Each game's day table, kept copy and daily totals, and its money sold per
// group (t: the group's tickets of the day, g: the group).
struct JuegoDelDia {
    const char* nombre;
    const char* dia;
    const char* copia;
    const char* totales;
    const char* venta;
};

const JuegoDelDia kJuegos[] = {
    {"GANADORES", "ma_principal", "ventas_ganadores", "ventas_ganadores_general",
     // Units at the group's unit price (the system's when the group sets none), as the booth charged them.
     "COALESCE(SUM(t.ganadores), 0) * (SELECT IF(MAX(x.valor_ganador) > 0, MAX(x.valor_ganador), "
     "(SELECT valor_ganador FROM configuracion LIMIT 1)) FROM grupos x WHERE x.grupo = g.grupo)"},
    {"TABLA FIJA", "tablafija", "ventas_tf", "ventas_tf_general", "COALESCE(SUM(t.monto), 0)"},
    // A Macuare ticket costs its amount times its veces.
    {"MACUARE", "macuares", "ventas_mc", "ventas_mc_general", "COALESCE(SUM(t.monto * t.veces), 0)"},
};

std::string tabla(const char* nombre) { return std::string("`") + nombre + "`"; }

// One totals row per group (every group, and any group that sold without a
// row in grupos): sold, paid, still due, and the balance sold - paid - due.
std::string totalesDelDia(const JuegoDelDia& j) {
    return "INSERT INTO " + tabla(j.totales) +
           " (grupo, fecha, venta, premios, saldo, monto_porpagar) "
           "SELECT s.grupo, ?, s.venta, s.premios, s.venta - s.premios - s.porpagar, s.porpagar FROM ("
           "SELECT g.grupo, " + std::string(j.venta) + " AS venta, "
           "COALESCE(SUM(CASE WHEN t.estatus = 2 OR t.estatus = 3 THEN t.cobrado END), 0) AS premios, "
           "COALESCE(SUM(CASE WHEN t.estatus = 1 OR t.estatus = 4 THEN t.cobrado END), 0) AS porpagar "
           "FROM (SELECT grupo FROM grupos UNION SELECT grupo FROM " + tabla(j.dia) + " WHERE fecha = ?) g "
           "LEFT JOIN " + tabla(j.dia) + " t ON t.grupo = g.grupo AND t.fecha = ? GROUP BY g.grupo) s "
           "ON DUPLICATE KEY UPDATE venta = VALUES(venta), premios = VALUES(premios), saldo = VALUES(saldo), "
           "monto_porpagar = VALUES(monto_porpagar)";
}

}  // namespace

CierreDia::CierreDia(Context& ctx) : ctx_(ctx) {}

QStringList CierreDia::poolsAbiertos(const QString& fecha) {
    QStringList out;
    const Recordset rs = ctx_.servidor().query(
        "SELECT c.carrera, COALESCE(h.hipodromo, '') AS hipodromo, max(c.venta) AS ganadores, max(c.venta_rm) AS "
        "remate, max(c.venta_tf) AS tablafija, max(c.venta_mc) AS macuare FROM carreras c LEFT JOIN hipodromos h "
        "ON h.id_hipodromo = c.id_hipodromo WHERE c.fecha = ? GROUP BY c.id_hipodromo, h.hipodromo, c.carrera "
        "HAVING max(c.venta) <> 0 OR max(c.venta_rm) <> 0 OR max(c.venta_tf) <> 0 OR max(c.venta_mc) <> 0 "
        "ORDER BY c.id_hipodromo, c.carrera",
        {fecha});
    for (const Row& r : rs) {
        QStringList juegos;
        if (r.integer("ganadores") != 0) juegos << QStringLiteral("GANADORES");
        if (r.integer("remate") != 0) juegos << QStringLiteral("REMATE");
        if (r.integer("tablafija") != 0) juegos << QStringLiteral("TABLA FIJA");
        if (r.integer("macuare") != 0) juegos << QStringLiteral("MACUARE");
        out << (r.text("hipodromo") + QStringLiteral(" CARRERA ") + r.text("carrera")).trimmed() +
                   QStringLiteral(": ") + juegos.join(QStringLiteral(", "));
    }
    return out;
}

QDate CierreDia::fechaPropuesta(const QDate& dia) const { return std::max(dia.addDays(1), ctx_.clock.today()); }

QString CierreDia::fechaNoValida(const QDate& dia, const QDate& siguiente) const {
    if (!siguiente.isValid()) return QStringLiteral("LA FECHA NO ES VALIDA (DD-MM-AAAA)");
    if (siguiente <= dia) return QStringLiteral("LA NUEVA FECHA DE TRABAJO DEBE SER POSTERIOR AL DIA QUE SE CIERRA");
    if (siguiente < ctx_.clock.today()) return QStringLiteral("LA NUEVA FECHA DE TRABAJO NO PUEDE SER ANTERIOR A HOY");
    return {};
}

CierreDia::Salida CierreDia::cerrar(const QDate& siguiente, bool cerrarPools) {
    Db& db = ctx_.servidor();
    const QString usuario = ctx_.session.usuario;
    const QString hora = horaTexto(ctx_.clock.now().time());
    Salida salida = db.inTransaction([&]() -> Salida {
        // The settings row first, then the day's race card: a sale in flight
        // (it holds its horse's row, a combination sale the settings row)
        // commits before the close reads the day; a later one finds its pool
        // closed.
        const Row conf = db.query("SELECT * FROM configuracion WHERE id = 1 FOR UPDATE").first();
        const QString fecha = conf.text("fecha");
        const QDate dia = desdeFechaSql(fecha);
        if (const QString negado = fechaNoValida(dia, siguiente); !negado.isEmpty()) return {std::nullopt, negado};
        db.query("SELECT id_carrera FROM carreras WHERE fecha = ? FOR UPDATE", {fecha});
        const QStringList abiertos = poolsAbiertos(fecha);
        if (!abiertos.isEmpty()) {
            if (!cerrarPools)
                return {std::nullopt, QStringLiteral("HAY CARRERAS ABIERTAS:\n") + abiertos.join(QLatin1Char('\n'))};
            db.exec("update carreras set estado_puestos='0',venta='0',venta_rm='0',venta_mc='0',venta_tf='0' "
                    "Where fecha = ?",
                    {fecha});
        }
        Resultado r;
        r.fecha = fecha;
        r.fechaNueva = fechaSql(siguiente);
        long long* guardados[] = {&r.ganadores, &r.tablaFija, &r.macuare};
        int i = 0;
        for (const JuegoDelDia& j : kJuegos) {
            const long long enDia =
                Row::toInteger(db.scalar("SELECT count(*) FROM " + tabla(j.dia) + " WHERE fecha = ?", {fecha}));
            const long long enCopia =
                Row::toInteger(db.scalar("SELECT count(*) FROM " + tabla(j.copia) + " WHERE fecha = ?", {fecha}));
            // A day already taken out of the day tables keeps the copy it has.
            if (enDia == 0 && enCopia > 0) {
                *guardados[i++] = enCopia;
                continue;
            }
            db.exec("DELETE FROM " + tabla(j.copia) + " WHERE fecha = ?", {fecha});
            *guardados[i++] =
                db.exec("INSERT INTO " + tabla(j.copia) + " SELECT NULL, t.* FROM " + tabla(j.dia) + " t WHERE t.fecha = ?",
                        {fecha});
            db.exec(totalesDelDia(j), {fecha, fecha, fecha});
        }
        // Each group's auction result of the day.
        escribirRemateDelDia(db, fecha);
        // Tickets stay in the day tables while they can be paid and `dias`
        // days more (a late one is still answered); days already closed leave them after that.
        const long long validez =
            Row::toInteger(db.scalar("SELECT COALESCE(max(duracionboletos), 0) FROM grupos")) + conf.integerOr("dias");
        const QString corte = fechaSql(siguiente.addDays(-validez));
        db.exec("INSERT INTO cierres_dia (fecha, fecha_nueva, usuario, hora, ganadores, tablafija, macuare) "
                "VALUES (?, ?, ?, ?, ?, ?, ?) ON DUPLICATE KEY UPDATE fecha_nueva = VALUES(fecha_nueva), "
                "usuario = VALUES(usuario), hora = VALUES(hora), ganadores = VALUES(ganadores), "
                "tablafija = VALUES(tablafija), macuare = VALUES(macuare)",
                {fecha, r.fechaNueva, usuario, hora, r.ganadores, r.tablaFija, r.macuare});
        anotar(db, {operacion::Cierre, {}, {}, {}, fecha, 0, static_cast<double>(r.ganadores), 0});
        for (const JuegoDelDia& j : kJuegos)
            r.retirados += db.exec("DELETE FROM " + tabla(j.dia) +
                                       " WHERE fecha < ? AND fecha IN (SELECT fecha FROM cierres_dia)",
                                   {corte});
        // The next day: its first race (on the current track when it races there), every sale closed.
        const Recordset primera = db.query(
            "SELECT carrera, id_hipodromo FROM carreras WHERE fecha = ? ORDER BY (id_hipodromo = ?) DESC, carrera, "
            "id_hipodromo LIMIT 1",
            {r.fechaNueva, conf.integerOr("id_hipodromo")});
        const long long carrera = primera.empty() ? conf.integerOr("carrera") : primera.first().integer("carrera");
        const long long pista = primera.empty() ? conf.integerOr("id_hipodromo") : primera.first().integer("id_hipodromo");
        db.exec("UPDATE configuracion SET fecha = ?, carrera = ?, id_hipodromo = ?, venta_ganadores = 0, "
                "venta_remate = 0, venta_macuare = 0, venta_tf = 0, mensajetaq = '' WHERE id = 1",
                {r.fechaNueva, carrera, pista});
        return {r, {}};
    });
    if (salida.hecho) cargarConfiguracion(ctx_.session, db.query("select * from configuracion").first());
    return salida;
}

bool CierreDia::Cerrar() {
    return proteger(ctx_, kTituloCierre, [&] {
        const QString fecha = Row::toText(ctx_.servidor().scalar("SELECT fecha FROM configuracion WHERE id = 1"));
        const QDate dia = desdeFechaSql(fecha);
        const QStringList abiertos = poolsAbiertos(fecha);
        if (!abiertos.isEmpty() &&
            !ctx_.dialogs.confirm(kTituloCierre,
                                  QStringLiteral("HAY CARRERAS ABIERTAS EL DIA ") + fechaVista(dia) +
                                      QStringLiteral(":\n") + abiertos.join(QLatin1Char('\n')) +
                                      QStringLiteral("\n\n¿DESEA CERRARLAS Y CERRAR EL DIA?"),
                                  true))
            return false;
        const auto tecleada = ctx_.dialogs.ask(kTituloCierre,
                                               QStringLiteral("INGRESE LA PROXIMA FECHA DE TRABAJO (DD-MM-AAAA)"),
                                               fechaVista(fechaPropuesta(dia)));
        if (!tecleada) return false;
        const QDate siguiente = QDate::fromString(tecleada->trimmed(), QStringLiteral("dd-MM-yyyy"));
        if (const QString negado = fechaNoValida(dia, siguiente); !negado.isEmpty()) {
            ctx_.dialogs.refuse(kTituloCierre, negado);
            return false;
        }
        if (!ctx_.dialogs.confirm(kTituloCierre,
                                  QStringLiteral("SE CERRARA EL DIA ") + fechaVista(dia) +
                                      QStringLiteral(" Y SE ABRIRA EL ") + fechaVista(siguiente) +
                                      QStringLiteral(". ¿ESTA SEGURO?"),
                                  true))
            return false;
        const Salida s = cerrar(siguiente, true);
        if (!s.hecho) {
            ctx_.dialogs.refuse(kTituloCierre, s.negado);
            return false;
        }
        ctx_.dialogs.inform(kTituloCierre,
                            QStringLiteral("DIA CERRADO CON EXITO. BOLETOS GUARDADOS: GANADORES %1, TABLA FIJA %2, "
                                           "MACUARE %3. NUEVA FECHA DE TRABAJO: %4")
                                .arg(s.hecho->ganadores)
                                .arg(s.hecho->tablaFija)
                                .arg(s.hecho->macuare)
                                .arg(fechaVista(s.hecho->fechaNueva)));
        return true;
    });
}

}  // namespace hipico
