#include "subastas/AdministracionSubasta.h"

#include "admin/ProcesoCarrera.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "subastas/DisenoSubasta.h"
#include "subastas/Liquidacion.h"

namespace hipico {

namespace {

// The race's auction rows of a centre (of every centre for "TODOS") inside
// the scope, locked.
Recordset filasBloqueadas(Db& db, const QString& fecha, long long carrera, const QString& centro,
                          const Alcance& alcance) {
    std::string sql = "SELECT id_carrera, ch, nu_caballo FROM carreras_remate WHERE fecha = ? AND carrera = ?";
    Params p{fecha, carrera};
    if (!esTodos(centro)) {
        sql += " AND ch = ?";
        p.push_back(centro);
    }
    sql += terminoCentro(alcance, "ch", p);
    return db.query(sql + " ORDER BY ch, id_carrera FOR UPDATE", p);
}

std::optional<long long> numero(const QString& texto) {
    const auto n = leerEntero(texto, 99);
    if (!n || *n == 0) return std::nullopt;
    return n;
}

// Checks a race's winner before it is written: the race has auction rows and
// the horse runs in it. Refusals are told under the title.
bool ganadorValido(Context& ctx, const QString& fecha, long long carrera, const QString& centro, long long caballo,
                   const QString& titulo, const Alcance& alcance = {}) {
    const Recordset filas = filasBloqueadas(ctx.servidor(), fecha, carrera, centro, alcance);
    if (filas.empty()) {
        ctx.dialogs.refuse(titulo, kSinSubasta);
        return false;
    }
    if (filas.find(QStringLiteral("nu_caballo"), QString::number(caballo)) < 0) {
        ctx.dialogs.refuse(titulo, texto::CaballoNoExiste);
        return false;
    }
    return true;
}

}  // namespace

QVector<GanadorSubasta> fijarGanador(Db& db, const QString& fecha, long long carrera, const QString& centro,
                                     int caballo, bool segundoLugar, const Alcance& alcance) {
    return db.inTransaction([&] {
        QVector<GanadorSubasta> out;
        QStringList centros;
        for (const Row& r : filasBloqueadas(db, fecha, carrera, centro, alcance))
            if (!centros.contains(r.text("ch"))) centros << r.text("ch");
        for (const QString& ch : centros) {
            Params p = segundoLugar ? Params{caballo, caballo, carrera, fecha, ch} : Params{caballo, carrera, fecha, ch};
            const std::string t = terminoCentro(alcance, "ch", p);
            db.exec(std::string("update carreras_remate set win=?") + (segundoLugar ? ",segundolugar=?" : "") +
                        " where carrera =? and fecha  = ? and ch  = ?" + t,
                    p);
            guardarMontosCasa(db, fecha, carrera, parametrosDelCentro(db, ch));
            const Row r = filasCarrera(db, fecha, carrera, ch).first();
            out.push_back({ch, r.number("monto_casa"), r.number("monto_casa2")});
        }
        return out;
    });
}

// ---------------------------------------------------------------- Form_Admin_Remate

QString AdminRemate::fecha() { return Row::toText(ctx_.servidor().scalar("SELECT fecha FROM configuracion")); }

QStringList AdminRemate::centros() {
    const QString& n = ctx_.session.nivel;
    if (!esAdministrador(n) && n != nivel::Supervisor) return {ctx_.session.ch};
    QStringList out{QStringLiteral("TODOS")};
    for (const Row& r : ctx_.servidor().query("select distinct ch from grupos order by ch")) out << r.text("ch");
    return out;
}

std::optional<QVector<GanadorSubasta>> AdminRemate::Procesar(const QString& carreraTexto, const QString& caballoTexto,
                                                            const QString& centro) {
    const auto carrera = numero(carreraTexto);
    if (!carrera) {
        ctx_.dialogs.refuse(kTituloGanadorSubasta, QStringLiteral("EL NUMERO DE CARRERA NO ES VALIDO"));
        return std::nullopt;
    }
    const auto caballo = numero(caballoTexto);
    if (!caballo) {
        ctx_.dialogs.refuse(kTituloGanadorSubasta, texto::CaballoNoValido);
        return std::nullopt;
    }
    if (!centros().contains(centro)) {
        ctx_.dialogs.refuse(kTituloGanadorSubasta, kElijaCentro);
        return std::nullopt;
    }
    const QString dia = fecha();
    if (!ganadorValido(ctx_, dia, *carrera, centro, *caballo, kTituloGanadorSubasta)) return std::nullopt;
    const auto hecho = fijarGanador(ctx_.servidor(), dia, *carrera, centro, static_cast<int>(*caballo), false);
    ctx_.dialogs.inform(kTituloGanadorSubasta, QStringLiteral("Los Cambios fueron hechos Exitosamente "));
    return hecho;
}

// ---------------------------------------------------------------- desk cells

const QStringList& CeldasSubasta::columnas() {
    static const QStringList c = {"tabla1", "mesa1", "tabla2", "mesa2", "tabla3", "mesa3", "tabla4", "mesa4",
                                  "tabla5", "mesa5", "pote",   "pote2", "tablacasa", "tablacasa2"};
    return c;
}

Recordset CeldasSubasta::cargar(const Seleccion& s) {
    Params p{s.carrera, s.fecha, s.centro};
    const std::string t = terminoCentro(s.alcance, "ch", p);
    return ctx_.servidor().query(
        "SELECT id_carrera ,fecha,carrera,caballo,retirado,tabla1,mesa1,tabla2,mesa2,tabla3,mesa3,tabla4,mesa4,tabla5,"
        "mesa5,pote,pote2,tablacasa,tablacasa2 FROM carreras_remate Where carrera = ? and fecha = ?  and ch = ?" + t +
            "  order by id_carrera ",
        p);
}

bool CeldasSubasta::escribir(const Seleccion& s, long long idCarrera, const QString& columna, const QString& texto) {
    if (ctx_.session.nivel == nivel::Socio || !columnas().contains(columna)) return false;
    SqlValue valor;
    if (columna.startsWith(QLatin1String("mesa"))) {
        const auto comprador = compradorSubasta(texto, ctx_.dialogs);
        if (!comprador) return false;
        valor = *comprador;
    } else {
        const auto monto = montoSubasta(texto, ctx_.dialogs);
        if (!monto) return false;
        valor = *monto;
    }
    Db& db = ctx_.servidor();
    if (!s.centroElegido() || !contieneCentro(db, s.alcance, s.centro)) {
        ctx_.dialogs.refuse(kTituloSubasta, kElijaCentro);
        return false;
    }
    std::string sql = "update carreras_remate set " + columna.toStdString() + "=? Where carrera = ? ";
    Params p{valor, s.carrera};
    // The pot is the race's: every row carries it.
    if (!columna.startsWith(QLatin1String("pote"))) {
        sql += "and id_carrera = ? ";
        p.push_back(idCarrera);
    }
    p.push_back(s.fecha);
    p.push_back(s.centro);
    sql += "and fecha = ? and ch = ?" + terminoCentro(s.alcance, "ch", p);
    db.exec(sql, p);
    return true;
}

bool CeldasSubasta::cambiarGanador(const Seleccion& s, const QString& caballoTexto) {
    const auto caballo = numero(caballoTexto);
    if (!caballo) {
        ctx_.dialogs.refuse(kTituloGanadorSubasta, texto::CaballoNoValido);
        return false;
    }
    if (!ganadorValido(ctx_, s.fecha, s.carrera, s.centro, *caballo, kTituloGanadorSubasta, s.alcance)) return false;
    fijarGanador(ctx_.servidor(), s.fecha, s.carrera, s.centro, static_cast<int>(*caballo), true, s.alcance);
    ctx_.dialogs.inform(kTituloGanadorSubasta, texto::CambiosRealizados);
    return true;
}

QStringList CeldasSubasta::porcentajes(const Seleccion& s) {
    Params p{s.grupoElegido() ? s.grupo : ctx_.session.grupo};
    const std::string t = terminoAlcance(s.alcance, "grupo", p);
    const Recordset rs = ctx_.servidor().query(
        "select por_remate, por_rematador, subastas, tablaz1, tablaz2, tablaz3, tablaz4 from grupos where grupo=?" + t,
        p);
    if (rs.empty()) return {};
    const Row& g = rs.first();
    return {QStringLiteral("Porcentaje del remate: ") + g.text("por_remate"),
            QStringLiteral("Porcentaje del rematador: ") + g.text("por_rematador"),
            QStringLiteral("Tablas de la subasta: ") + g.text("subastas"),
            QStringLiteral("Tablazos: ") + g.text("tablaz1") + " / " + g.text("tablaz2") + " / " + g.text("tablaz3") +
                " / " + g.text("tablaz4")};
}

}  // namespace hipico
