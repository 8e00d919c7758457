#include "admin/CentroEscritorio.h"

#include "admin/ReglaDividendo.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"

#include <cmath>

namespace hipico {

namespace {

// The horses a centre has limits for, and those its manager blocks and restores.
constexpr int kCaballos = 16;
constexpr int kCaballosGerencia = 14;
const QString kTituloCupos = QStringLiteral("Cupos de Venta");
const QString kTituloDividendos = QStringLiteral("Administración de Dividendos");

// The centre's row for the track of a table of rules, created empty when missing.
void asegurarFila(Db& d, const std::string& tabla, const QString& centro, long long idHipodromo) {
    if (Row::toInteger(d.scalar("SELECT count(*) FROM " + tabla + " where ch = ? and id_hipodromo = ?",
                                {centro, idHipodromo})) == 0)
        d.exec("INSERT INTO " + tabla + " (ch, id_hipodromo) VALUES (?, ?)", {centro, idHipodromo});
}

}  // namespace

// ---------------------------------------------------------------- limits

std::optional<Row> CuposCentro::leer(const Seleccion& s) {
    if (!s.centroElegido()) return std::nullopt;
    std::optional<Row> out;
    guardado([&] {
        Params p{s.centro};
        const std::string t = terminoCentro(s.alcance, "ch", p);
        const Recordset rs = db().query("SELECT * FROM venta_cupo_ganadores where  ch  = ?" + t, p);
        if (!rs.empty()) out = rs.first();
    });
    return out;
}

bool CuposCentro::guardarCupo(const Seleccion& s, int caballo, const QString& valor) {
    const auto v = monto(valor);
    if (caballo < 1 || caballo > kCaballos || !s.centroElegido() || !v) {
        ctx_.dialogs.refuse(kTituloCupos, texto::ValorNoValido);
        return false;
    }
    return guardado([&] {
        Params p{*v, s.centro};
        const std::string t = terminoCentro(s.alcance, "ch", p);
        db().exec("update venta_cupo_ganadores set cab" + std::to_string(caballo) + "= ? Where ch = ?" + t, p);
    });
}

bool CuposCentro::guardarCupos(const Seleccion& s, const QStringList& valores) {
    Params params;
    for (int i = 0; i < kCaballos; ++i) {
        const auto v = monto(valores.value(i));
        if (!v || !s.centroElegido()) {
            ctx_.dialogs.refuse(kTituloCupos, texto::ValorNoValido);
            return false;
        }
        params.push_back(*v);
    }
    params.push_back(s.centro);
    return guardado([&] {
        QStringList columnas;
        for (int i = 1; i <= kCaballos; ++i) columnas << QStringLiteral("cab%1= ?").arg(i);
        const std::string sql =
            ("update venta_cupo_ganadores  set " + columnas.join(',') + " Where ch = ?").toStdString();
        Db& d = db();
        if (!contieneCentro(d, s.alcance, s.centro)) {
            ctx_.dialogs.refuse(kTituloCupos, texto::ValorNoValido);
            return false;
        }
        d.inTransaction([&] {
            if (Row::toInteger(d.scalar("SELECT count(*) FROM venta_cupo_ganadores where ch = ?", {s.centro})) == 0)
                d.exec("INSERT INTO venta_cupo_ganadores (ch) VALUES (?)", {s.centro});
            d.exec(sql, params);
        });
        ctx_.dialogs.inform(kTituloCupos, texto::CambiosRealizados);
        return true;
    });
}

void CuposCentro::escribirCatorce(const Seleccion& s, double valor) {
    Db& d = db();
    d.inTransaction([&] {
        for (int i = 1; i <= kCaballosGerencia; ++i) {
            Params p{valor, s.centro};
            const std::string t = terminoCentro(s.alcance, "ch", p);
            d.exec("update venta_cupo_ganadores set cab" + std::to_string(i) + "= ? Where ch = ?" + t, p);
        }
    });
    ctx_.dialogs.inform(kTituloCupos, texto::CambiosRealizados);
}

bool CuposCentro::bloquear(const Seleccion& s) {
    if (!s.centroElegido()) {
        ctx_.dialogs.refuse(kTituloCupos, texto::ValorNoValido);
        return false;
    }
    return guardado([&] { escribirCatorce(s, 0); });
}

bool CuposCentro::restaurar(const Seleccion& s) {
    if (!s.centroElegido()) {
        ctx_.dialogs.refuse(kTituloCupos, texto::ValorNoValido);
        return false;
    }
    return guardado([&] {
        const auto id = idHipodromo(s, true);
        if (!id) return false;
        Params p{s.centro, *id};
        const std::string t = terminoCentro(s.alcance, "ch", p);
        const Recordset d = db().query("SELECT * FROM dividendos where  ch  = ? and id_hipodromo= ?" + t, p);
        if (d.empty()) {
            ctx_.dialogs.refuse(kTituloSinRegistrosDividendos, kSinRegistrosDividendos);
            return false;
        }
        escribirCatorce(s, d.first().number("cupo"));
        return true;
    });
}

// ---------------------------------------------------------------- dividend rule

bool ReglaCentro::sinRegla(const Seleccion& s, long long idHipodromo, bool avisar) {
    if (!porHipodromo() || esRed(s.alcance) ||
        Row::toInteger(db().scalar("SELECT count(*) FROM dividendos where ch = ? and id_hipodromo = ?",
                                   {s.centro, idHipodromo})) > 0)
        return false;
    if (avisar) ctx_.dialogs.refuse(kTituloSinRegistrosDividendos, kSinRegistrosDividendos);
    return true;
}

QMap<QString, QString> ReglaCentro::leer(const Seleccion& s, bool avisar) {
    QMap<QString, QString> out;
    guardado([&] {
        Params pg{s.centro};
        const std::string tg = terminoAlcance(s.alcance, "grupo", pg);
        const Recordset g = s.centroElegido()
                                ? db().query("SELECT * FROM grupos where ch = ?" + tg + " order by id_grupo limit 1", pg)
                                : Recordset();
        if (g.empty()) return;
        Row regla = g.first();
        const auto id = idHipodromo(s, false);
        if (porHipodromo()) {
            if (!id || sinRegla(s, *id, avisar)) return;
            const Recordset d =
                db().query("select * from dividendos where ch= ? and id_hipodromo= ?", {s.centro, *id});
            regla = d.empty() ? Row() : d.first();
        }
        for (const QString& c : columnasRegla()) out.insert(c, regla.textOr(c, QStringLiteral("0")));
        out.insert("divopc", g.first().text("divopc"));
        out.insert("mododiv", g.first().text("mododiv"));
        if (id) {
            const Recordset a =
                db().query("select * from dividendos_ampliados where ch= ? and id_hipodromo= ?", {s.centro, *id});
            for (const QString& c : columnasAmpliadas())
                out.insert(c, !a.empty() ? a.first().text(c) : QStringLiteral("0"));
        }
    });
    return out;
}

bool ReglaCentro::guardar(const Seleccion& s, const QMap<QString, QString>& campos) {
    if (!s.centroElegido()) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, QStringLiteral("DEBE SELECCIONAR UN CENTRO HIPICO"));
        return false;
    }
    // Every field is checked before anything is written.
    auto leer = [&](const QString& c, Params& params) {
        const QString t = campos.value(c, QStringLiteral("0")).trimmed();
        double v = 0;
        bool ok = leerMonto(t.isEmpty() ? QStringLiteral("0") : t, v) && std::abs(v) <= kMontoMaximo;
        if (ok && columnaEntera(c)) ok = v == std::floor(v);
        if (!ok) {
            ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, QStringLiteral("EL CAMPO %1 NO ES VALIDO").arg(c.toUpper()));
            return false;
        }
        if (columnaEntera(c)) params.push_back(static_cast<long long>(v));
        else params.push_back(v);
        return true;
    };
    Params regla, ampliada, modo;
    for (const QString& c : columnasRegla())
        if (!leer(c, regla)) return false;
    for (const QString& c : columnasAmpliadas())
        if (!leer(c, ampliada)) return false;
    for (const char* c : {"divopc", "mododiv"})
        if (!leer(c, modo)) return false;
    const int empate = static_cast<int>(campos.value("empate").toDouble());
    double minimo = 0;  // typed with "," or "." as decimal point
    if (empate == int(ModoEmpate::GeneralMinimo) &&
        (!leerMonto(campos.value("empatemin").trimmed(), minimo) || minimo <= 0)) {
        ctx_.dialogs.refuse(QStringLiteral("VERIFICAR SELECCION"),
                            QStringLiteral("DEBE SELECCIONAR UNA OPCION CORRECTA EN EL MINIMO"));
        return false;
    }

    return guardado([&] {
        if (!contieneCentro(db(), s.alcance, s.centro)) {
            ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, QStringLiteral("DEBE SELECCIONAR UN CENTRO HIPICO"));
            return false;
        }
        const auto id = idHipodromo(s, true);
        if (!id || sinRegla(s, *id, true)) return false;
        auto asignaciones = [](const QStringList& columnas) {
            std::string a;
            for (const QString& c : columnas) a += (a.empty() ? "`" : ",`") + c.toStdString() + "`= ?";
            return a;
        };
        Db& d = db();
        d.inTransaction([&] {
            if (porHipodromo()) {
                asegurarFila(d, "dividendos", s.centro, *id);
                Params p = regla;
                p.push_back(s.centro);
                p.push_back(*id);
                d.exec("update dividendos set " + asignaciones(columnasRegla()) + " Where ch = ? and id_hipodromo = ?",
                       p);
                Params m = modo;
                m.push_back(s.centro);
                const std::string t = terminoAlcance(s.alcance, "grupo", m);
                d.exec("update grupos set divopc= ?,mododiv= ? Where ch = ?" + t, m);
            } else {
                Params p = regla;
                p.insert(p.end(), modo.begin(), modo.end());
                p.push_back(s.centro);
                const std::string t = terminoAlcance(s.alcance, "grupo", p);
                d.exec("update grupos set " + asignaciones(columnasRegla() + QStringList{"divopc", "mododiv"}) +
                           " Where ch = ?" + t,
                       p);
            }
            asegurarFila(d, "dividendos_ampliados", s.centro, *id);
            Params a = ampliada;
            a.push_back(s.centro);
            a.push_back(*id);
            d.exec("update dividendos_ampliados set " + asignaciones(columnasAmpliadas()) +
                       " Where ch = ? and id_hipodromo = ?",
                   a);
        });
        ctx_.dialogs.inform(kTituloDividendos, texto::CambiosRealizados);
        return true;
    });
}

}  // namespace hipico
