#include "admin/DescargasEscritorio.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "schema/Escritores.h"

namespace hipico {

namespace {

const QString kTituloDescargas = QStringLiteral("Descargas");
const QString kTituloCondicionados = QStringLiteral("Registro de Condicionados");

}  // namespace

std::optional<double> DescargasGrupo::montoDelGrupo(const Seleccion& s, const QString& montoTexto,
                                                    const QString& titulo, const QString& invalido) {
    if (!s.grupoElegido() || !contieneGrupo(db(), s.alcance, s.grupo)) {
        ctx_.dialogs.refuse(titulo, texto::DebeSeleccionarGrupo);
        return std::nullopt;
    }
    const auto m = monto(montoTexto);
    if (!m || *m <= 0) {
        ctx_.dialogs.refuse(titulo, invalido);
        return std::nullopt;
    }
    return m;
}

bool DescargasGrupo::registrarDescarga(const Seleccion& s, const QString& caballo, const QString& montoTexto) {
    const QString& titulo = texto::TituloVerifiqueIntente;
    return guardado([&] {
        const auto m = montoDelGrupo(s, montoTexto, titulo, QStringLiteral("EL MONTO DE LA JUGADA NO ES VALIDO"));
        if (!m) return false;
        const Recordset g = db().query("SELECT ch,subgrupo,cab_max FROM grupos where grupo = ?", {s.grupo});
        const auto n = leerEntero(caballo);
        if (g.empty() || !n || *n == 0 || *n > g.first().integer("cab_max")) {
            ctx_.dialogs.refuse(titulo, texto::CaballoNoValido);
            return false;
        }
        const auto id = idHipodromo(s, true);
        if (!id) return false;
        const long long abiertas = Row::toInteger(db().scalar(
            "SELECT count(*) FROM carreras where carrera = ? and fecha = ? and id_hipodromo = ? and venta = 1",
            {s.carrera, s.fecha, *id}));
        if (abiertas == 0) {
            ctx_.dialogs.refuse(titulo, texto::CarreraSeEncuentraCerrada);
            return false;
        }
        const Recordset c = db().query("SELECT * FROM carreras where  carrera = ? and fecha  = ? and nu_caballo= ? "
                                       "and id_hipodromo = ?",
                                       {s.carrera, s.fecha, *n, *id});
        if (c.empty()) {
            ctx_.dialogs.refuse(titulo, texto::CaballoNoExiste);
            return false;
        }
        if (c.first().integer("retirado") != 0) {
            ctx_.dialogs.refuse(titulo, texto::CaballoRetirado);
            return false;
        }
        insertar(db(), Descarga{s.fecha, horaTexto(ctx_.clock.now().time()), g.first().text("ch"), s.grupo,
                                s.carrera, *n, *m, 0.0}
                           .insercion());
        ctx_.dialogs.inform(kTituloDescargas, QStringLiteral("Jugada registrada con exito"));
        return true;
    });
}

DescargasGrupo::Descargas DescargasGrupo::descargas(const Seleccion& s) {
    Descargas d;
    guardado([&] {
        Params p{s.fecha};
        std::string sql = "SELECT * FROM descargas Where fecha= ?";
        if (s.grupoElegido()) {
            sql += " AND grupo = ?";
            p.push_back(s.grupo);
        }
        d.filas = db().query(sql + terminoAlcance(s.alcance, "grupo", p), p);
        for (const Row& r : d.filas) {
            d.sumaganadores += r.number("ganadores");
            d.sumacobrado += r.number("cobrado");
        }
    });
    return d;
}

bool DescargasGrupo::registrarCondicionado(const Seleccion& s, const QString& caballo, const QString& montoTexto) {
    return guardado([&] {
        const auto m = montoDelGrupo(s, montoTexto, kTituloCondicionados, texto::MontoNoValido);
        if (!m) return false;
        const auto id = idHipodromo(s, true);
        if (!id) return false;
        const auto n = leerEntero(caballo);
        const long long existe =
            n ? Row::toInteger(db().scalar("SELECT count(*) FROM carreras where carrera = ? and fecha = ? and "
                                           "nu_caballo = ? and id_hipodromo = ?",
                                           {s.carrera, s.fecha, *n, *id}))
              : 0;
        if (existe == 0) {
            ctx_.dialogs.refuse(kTituloCondicionados, texto::CaballoNoExiste);
            return false;
        }
        const Recordset g = db().query("SELECT ch,subgrupo FROM grupos where grupo = ?", {s.grupo});
        if (g.empty()) return false;
        insertar(db(), Condicionado{g.first().text("ch"), s.grupo, g.first().text("subgrupo"), s.fecha, s.carrera, *n,
                                    *m}
                           .insercion());
        ctx_.dialogs.inform(kTituloCondicionados, texto::CambiosRealizados);
        return true;
    });
}

Recordset DescargasGrupo::condicionados(const Seleccion& s) {
    Recordset rs;
    guardado([&] {
        Params p{s.fecha, s.grupo, s.carrera};
        const std::string t = terminoAlcance(s.alcance, "grupo", p);
        rs = db().query("SELECT  *  FROM condicionados WHERE  fecha  = ? and grupo = ? and carrera = ?" + t +
                            " order by id_condicionado desc   ",
                        p);
    });
    return rs;
}

bool DescargasGrupo::eliminarCondicionado(long long id, const Alcance& alcance) {
    return guardado([&] {
        Params p{id};
        const std::string t = terminoAlcance(alcance, "grupo", p);
        if (db().exec("delete from  condicionados  Where id_condicionado = ?" + t + " limit 1 ", p) == 0) return false;
        ctx_.dialogs.inform(texto::TituloEliminacionRegistros, QStringLiteral("EL registro fue eliminado con exito"));
        return true;
    });
}

}  // namespace hipico
