#include "admin/Escritorio.h"

#include "admin/ProcesoCarrera.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/Juego.h"

namespace hipico {

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

QStringList OpcionesEscritorio::centros() const {
    return lista("select distinct ch from grupos order by ch", {}, "ch", {QStringLiteral("TODOS")});
}

QStringList OpcionesEscritorio::grupos(const QString& centro) const {
    return esTodos(centro) ? lista("select grupo from grupos order by grupo", {}, "grupo", {QStringLiteral("TODOS")})
                           : lista("select grupo from grupos where ch = ? order by grupo", {centro}, "grupo",
                                   {QStringLiteral("TODOS")});
}

Recordset OpcionesEscritorio::taquillasDelGrupo(const Seleccion& s) const {
    Recordset rs;
    guardado([&] {
        rs = db().query("Select * from usuarios where grupo= ?  And (nivel= 'Taquilla' Or nivel = 'Total' OR "
                        "nivel = 'Taquilla2')",
                        {s.grupo});
    });
    return rs;
}

}  // namespace hipico
