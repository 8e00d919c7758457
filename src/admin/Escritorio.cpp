#include "admin/Escritorio.h"

#include "admin/ProcesoCarrera.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Session.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/Juego.h"

namespace hipico {

bool esRed(const Alcance& a) { return a.tipo == Alcance::Tipo::Todos; }

std::string terminoAlcance(const Alcance& a, const char* columnaGrupo, Params& params) {
    if (esRed(a)) return {};
    const CondicionSql c = condicionAlcance(Session{}, a, columnaGrupo);
    params.insert(params.end(), c.params.begin(), c.params.end());
    return c.sql;
}

std::string terminoCentro(const Alcance& a, const char* columnaCentro, Params& params) {
    if (esRed(a)) return {};
    return std::string(" and ") + columnaCentro + " in (select gch.ch from grupos gch where 1=1" +
           terminoAlcance(a, "gch.grupo", params) + ")";
}

std::function<bool(Db&, const Row&)> dentroDe(const Alcance& a) {
    if (esRed(a)) return {};
    return [a](Db& d, const Row& b) { return contieneGrupo(d, a, b.text("grupo")); };
}

bool contieneGrupo(Db& db, const Alcance& a, const QString& grupo) {
    Params p{grupo};
    const std::string t = terminoAlcance(a, "grupo", p);
    return Row::toInteger(db.scalar("SELECT count(*) FROM grupos where grupo = ?" + t, p)) > 0;
}

bool contieneCentro(Db& db, const Alcance& a, const QString& centro) {
    Params p{centro};
    const std::string t = terminoAlcance(a, "grupo", p);
    return Row::toInteger(db.scalar("SELECT count(*) FROM grupos where ch = ?" + t, p)) > 0;
}

Alcance alcanceGrupo(const Session& s) { return Alcance::grupo(s.grupo); }
Alcance alcanceSubgrupo(const Session& s) { return Alcance::subgrupo(s.subgrupoNombre); }

bool Seleccion::centroElegido() const { return !esTodos(centro); }
bool Seleccion::grupoElegido() const { return !esTodos(grupo); }

Seleccion seleccionInicial(const Context& ctx) {
    Seleccion s;
    s.fecha = fechaTrabajo(ctx);
    return s;
}

Db& ComandoEscritorio::db() const { return ctx_.servidor(); }

bool ComandoEscritorio::porHipodromo() const { return ctx_.session.modoventa != 0; }

std::optional<long long> ComandoEscritorio::idHipodromo(const Seleccion& s, bool exigir) const {
    if (!s.hipodromo.trimmed().isEmpty()) {
        const Recordset h = db().query("select * from hipodromos where hipodromo= ?", {s.hipodromo.trimmed()});
        if (!h.empty()) return h.first().integer("id_hipodromo");
    }
    if (porHipodromo()) {
        if (exigir) ctx_.dialogs.refuse(QStringLiteral("Dato Necesario"), texto::DebeSeleccionarHipodromo);
        return std::nullopt;
    }
    return Row::toInteger(db().scalar("SELECT id_hipodromo FROM configuracion"));
}

double ComandoEscritorio::valorGanador() const {
    return Row::toNumber(db().scalar("SELECT valor_ganador FROM configuracion"));
}

std::optional<double> ComandoEscritorio::monto(const QString& texto) {
    double v = 0;
    if (!leerMonto(texto, v) || v < 0 || v > kMontoMaximo) return std::nullopt;
    return v;
}

// ---------------------------------------------------------------- choices

QStringList OpcionesEscritorio::lista(const std::string& sql, const Params& params, const QString& columna,
                                      QStringList primero) const {
    guardado([&] {
        for (const Row& r : db().query(sql, params)) primero << r.text(columna);
    });
    return primero;
}

QStringList OpcionesEscritorio::hipodromos() const {
    return lista("select * from hipodromos where estatus = 1 order by id_hipodromo", {}, "hipodromo");
}

QString OpcionesEscritorio::hipodromoPorDefecto() const {
    return lista("select h.hipodromo from hipodromos h, configuracion c where h.id_hipodromo = c.id_hipodromo", {},
                 "hipodromo")
        .value(0);
}

QStringList OpcionesEscritorio::centros(const Alcance& a) const {
    Params p;
    const std::string t = terminoAlcance(a, "grupo", p);
    return lista("select distinct ch from grupos where 1=1" + t + " order by ch", p, "ch", {QStringLiteral("TODOS")});
}

QStringList OpcionesEscritorio::grupos(const QString& centro, const Alcance& a) const {
    Params p;
    std::string sql = "select grupo from grupos where 1=1";
    if (!esTodos(centro)) {
        sql += " and ch = ?";
        p.push_back(centro);
    }
    sql += terminoAlcance(a, "grupo", p) + " order by grupo";
    return lista(sql, p, "grupo", {QStringLiteral("TODOS")});
}

Recordset OpcionesEscritorio::taquillasDelGrupo(const Seleccion& s) const {
    Recordset rs;
    guardado([&] {
        Params p{s.grupo};
        const std::string t = terminoAlcance(s.alcance, "grupo", p);
        rs = db().query("Select * from usuarios where grupo= ?  And (nivel= 'Taquilla' Or nivel = 'Total' OR "
                        "nivel = 'Taquilla2')" + t,
                        p);
    });
    return rs;
}

}  // namespace hipico
