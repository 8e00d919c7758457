#include "admin/AdminGanadores.h"

#include "core/Context.h"
#include "core/Formato.h"

#include <QLocale>
#include <QTime>

namespace hipico {

namespace {

const QString kTituloDatoNecesario = QStringLiteral("Dato Necesario");
const QString kTituloValidacion = QStringLiteral("VALIDACIÓN DE DATOS");
const QString kTituloProceso = QStringLiteral("VERIFIQUE EL PROCESO");
const QString kTituloVerifique = QStringLiteral("VERIFIQUE E INTENTE DE NUEVO");
const QString kTituloCarreras = QStringLiteral("Administración de Carreras");
const QString kTituloAnulacionCarrera = QStringLiteral("Anulacion de Carrera");
const QString kTituloCondicionados = QStringLiteral("Registro de Condicionados");
const QString kTituloCupos = QStringLiteral("Cupos de Venta");
const QString kTituloDividendos = QStringLiteral("Administración de Dividendos");
const QString kExito = QStringLiteral("Los cambios se han realizado con exito");

constexpr double kMontoMaximo = 1e9;

// A whole number typed in a box (nothing else around it).
std::optional<long long> entero(const QString& texto) {
    const QString t = texto.trimmed();
    if (t.isEmpty() || t.size() > 9) return std::nullopt;
    for (const QChar c : t)
        if (!(c.isDigit() && c.unicode() < 128)) return std::nullopt;
    return t.toLongLong();
}

// An amount typed with "," or "." as decimal point: finite, not negative, not huge.
std::optional<double> monto(const QString& texto) {
    double v = 0;
    if (!leerMonto(texto, v) || v < 0 || v > kMontoMaximo) return std::nullopt;
    return v;
}

}  // namespace

AdminGanadores::AdminGanadores(Context& ctx) : ctx_(ctx) {
    fecha = ctx.session.fecha.isEmpty() ? fechaSql(ctx.clock.today()) : ctx.session.fecha;
}

Db& AdminGanadores::db() const { return ctx_.servidor(); }

bool AdminGanadores::porHipodromo() const { return ctx_.session.modoventa != 0; }

bool AdminGanadores::grupoElegido() const { return !esTodos(grupo); }

bool AdminGanadores::seguro(const QString& titulo, const std::function<bool()>& fn) {
    try {
        return fn();
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(titulo, e.text());
    }
    return false;
}

double AdminGanadores::valorGanador() {
    return Row::toNumber(db().scalar("SELECT valor_ganador FROM configuracion"));
}

std::optional<long long> AdminGanadores::idHipodromo(bool exigir) {
    if (!hipodromo.trimmed().isEmpty()) {
        const Recordset h = db().query("select * from hipodromos where hipodromo= ?", {hipodromo.trimmed()});
        if (!h.empty()) return h.first().integer("id_hipodromo");
    }
    if (porHipodromo()) {
        if (exigir) ctx_.dialogs.refuse(kTituloDatoNecesario, QStringLiteral("Debe seleccionar un hipodromo"));
        return std::nullopt;
    }
    return Row::toInteger(db().scalar("SELECT id_hipodromo FROM configuracion"));
}

// ---------------------------------------------------------------- choices

QStringList AdminGanadores::lista(const std::string& sql, const Params& params, const QString& columna,
                                  QStringList primero) const {
    try {
        for (const Row& r : db().query(sql, params)) primero << r.text(columna);
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloCarreras, e.text());
    }
    return primero;
}

QStringList AdminGanadores::hipodromos() const {
    return lista("select * from hipodromos where estatus = 1 order by id_hipodromo", {}, "hipodromo");
}

QString AdminGanadores::hipodromoPorDefecto() const {
    return lista("select h.hipodromo from hipodromos h, configuracion c where h.id_hipodromo = c.id_hipodromo", {},
                 "hipodromo")
        .value(0);
}

QStringList AdminGanadores::centros() const {
    return lista("select distinct ch from grupos order by ch", {}, "ch", {QStringLiteral("TODOS")});
}

QStringList AdminGanadores::grupos() const {
    return esTodos(centro) ? lista("select grupo from grupos order by grupo", {}, "grupo", {QStringLiteral("TODOS")})
                           : lista("select grupo from grupos where ch = ? order by grupo", {centro}, "grupo",
                                   {QStringLiteral("TODOS")});
}

// ---------------------------------------------------------------- sales

AdminGanadores::VentasCaballos AdminGanadores::ventasPorCaballo() {
    VentasCaballos v;
    seguro(kTituloCarreras, [&] {
        v.filas = grupoElegido()
                      ? db().query("SELECT caballo,sum(ganadores) as venta FROM ma_principal where carrera = ? and "
                                   "fecha  like ? and estatus <> 5 and grupo = ? group by caballo",
                                   {carrera, fecha, grupo})
                      : db().query("SELECT caballo,sum(ganadores) as venta FROM ma_principal where carrera = ? and "
                                   "fecha  like ? and estatus <> 5 group by caballo",
                                   {carrera, fecha});
        for (const Row& r : v.filas) v.unidades += r.number("venta");
        v.monto = v.unidades * valorGanador();
        return true;
    });
    return v;
}

QStringList AdminGanadores::lineasVentas(const VentasCaballos& v) const {
    QStringList out{QStringLiteral("        CABALLO          VENTA")};
    const QLocale en(QLocale::English);
    for (const Row& r : v.filas)
        out << QStringLiteral("%1%2").arg(r.integer("caballo"), 15).arg(en.toString(r.number("venta"), 'f', 0), 15);
    out << QStringLiteral("Venta en Gand:     ") + en.toString(v.unidades, 'f', 0);
    out << QStringLiteral("Venta en Bsf:     ") + formatoMonto(v.monto, ctx_.session.enDolares());
    return out;
}

AdminGanadores::VentasDia AdminGanadores::ventasDelDia() {
    VentasDia d;
    seguro(kTituloCarreras, [&] {
        d.unidades = Row::toNumber(db().scalar(
            "SELECT sum(ganadores) as venta FROM ma_principal where estatus <> 5  and fecha  like ?", {fecha}));
        d.monto = d.unidades * valorGanador();
        d.cobrado = Row::toNumber(db().scalar("SELECT sum(cobrado) as monto_cobrado FROM ma_principal where "
                                              "(estatus=2 or estatus=3)  and fecha  like ?",
                                              {fecha}));
        d.cobradoYPorCobrar = Row::toNumber(db().scalar(
            "SELECT sum(cobrado) as monto_cobrado FROM ma_principal where "
            "(estatus=2 or estatus=3 or estatus=1 or estatus=4)  and fecha  like ?",
            {fecha}));
        return true;
    });
    return d;
}

Recordset AdminGanadores::taquillasDelGrupo() {
    Recordset rs;
    seguro(kTituloCarreras, [&] {
        rs = db().query("Select * from usuarios where grupo= ?  And (nivel= 'Taquilla' Or nivel = 'Total' OR "
                        "nivel = 'Taquilla2')",
                        {grupo});
        return true;
    });
    return rs;
}

// ---------------------------------------------------------------- race card

Recordset AdminGanadores::listaCarrera() {
    Recordset rs;
    seguro(kTituloCarreras, [&] {
        const auto id = idHipodromo(false);
        rs = id ? db().query("SELECT * FROM carreras Where carrera like ? and fecha like ? and id_hipodromo = ?  "
                             "order by id_carrera   ",
                             {carrera, fecha, *id})
                : db().query("SELECT * FROM carreras Where carrera like ? and fecha like ?  order by id_carrera   ",
                             {carrera, fecha});
        return true;
    });
    return rs;
}

bool AdminGanadores::cambiarEstado(long long idCarrera, int estado) {
    if (estado < 0 || estado > 2) {
        ctx_.dialogs.refuse(kTituloVerifique, QStringLiteral("EL ESTADO NO ES VALIDO"));
        return false;
    }
    return seguro(kTituloCarreras, [&] {
        db().exec("update carreras set estado= ? Where carrera like ? and fecha like ? and id_carrera = ?",
                  {estado, carrera, fecha, idCarrera});
        return true;
    });
}

bool AdminGanadores::cambiarApuestaMax(long long idCarrera, const QString& valor) {
    const auto v = monto(valor);
    if (!v) {
        ctx_.dialogs.refuse(kTituloVerifique, QStringLiteral("EL MONTO NO ES VALIDO"));
        return false;
    }
    return seguro(kTituloCarreras, [&] {
        db().exec("update carreras set apuesta_max_win= ? Where carrera like ? and fecha like ? and id_carrera = ?",
                  {*v, carrera, fecha, idCarrera});
        return true;
    });
}

bool AdminGanadores::cambiarRetirado(long long idCarrera, bool retirado) {
    return seguro(kTituloCarreras, [&] {
        Db& d = db();
        return d.inTransaction([&] {
            const Recordset fila = d.query("SELECT * FROM carreras Where carrera = ? and fecha = ? and id_carrera = ? "
                                           "FOR UPDATE",
                                           {carrera, fecha, idCarrera});
            if (fila.empty()) return false;
            const long long caballo = fila.first().integer("nu_caballo");
            if (retirado) {
                d.exec("update carreras set retirado=1 Where carrera = ? and fecha = ? and id_carrera = ?",
                       {carrera, fecha, idCarrera});
                d.exec("update carreras_remate set retirado=1,tabla1=0,mesa1='RET',tabla2=0,mesa2='RET',tabla3=0,"
                       "mesa3='RET',tabla4=0,mesa4='RET',tabla5=0,mesa5='RET',tablacasa=0,tablacasa2=0,invalidado=0,"
                       "invalidado2=0 Where carrera = ? and fecha = ? and nu_caballo = ?",
                       {carrera, fecha, caballo});
            } else {
                d.exec("update carreras set retirado=0 Where carrera = ? and fecha = ? and id_carrera = ?",
                       {carrera, fecha, idCarrera});
                d.exec("update carreras_remate set retirado=0 Where carrera = ? and fecha = ? and nu_caballo = ?",
                       {carrera, fecha, caballo});
                // The horse runs again: its open tickets (refunds not yet paid included) are sold tickets again.
                d.exec("update ma_principal set estatus=0,cobrado=0,llave6=0 Where carrera like ? and fecha = ? and "
                       "caballo = ? and estatus <> 2 and estatus <> 3",
                       {carrera, fecha, caballo});
                d.exec("update descargas set cobrado=0 Where carrera = ? and fecha = ? and caballo = ?",
                       {carrera, fecha, caballo});
            }
            return true;
        });
    });
}

// ---------------------------------------------------------------- limits

std::optional<Row> AdminGanadores::cuposCentro() {
    if (esTodos(centro)) return std::nullopt;
    std::optional<Row> out;
    seguro(kTituloCupos, [&] {
        const Recordset rs = db().query("SELECT * FROM venta_cupo_ganadores where  ch  = ?", {centro});
        if (!rs.empty()) out = rs.first();
        return true;
    });
    return out;
}

bool AdminGanadores::guardarCupo(int caballo, const QString& valor) {
    const auto v = monto(valor);
    if (caballo < 1 || caballo > 16 || esTodos(centro) || !v) {
        ctx_.dialogs.refuse(kTituloCupos, QStringLiteral("EL VALOR NO ES VALIDO"));
        return false;
    }
    return seguro(kTituloCupos, [&] {
        db().exec("update venta_cupo_ganadores set cab" + std::to_string(caballo) + "= ? Where ch = ?", {*v, centro});
        return true;
    });
}

bool AdminGanadores::guardarCupos(const QStringList& valores) {
    Params params;
    for (int i = 0; i < 16; ++i) {
        const auto v = monto(valores.value(i));
        if (!v || esTodos(centro)) {
            ctx_.dialogs.refuse(kTituloCupos, QStringLiteral("EL VALOR NO ES VALIDO"));
            return false;
        }
        params.push_back(*v);
    }
    params.push_back(centro);
    return seguro(kTituloCupos, [&] {
        QStringList columnas;
        for (int i = 1; i <= 16; ++i) columnas << QStringLiteral("cab%1= ?").arg(i);
        const std::string sql =
            ("update venta_cupo_ganadores  set " + columnas.join(',') + " Where ch = ?").toStdString();
        Db& d = db();
        d.inTransaction([&] {
            if (Row::toInteger(d.scalar("SELECT count(*) FROM venta_cupo_ganadores where ch = ?", {centro})) == 0)
                d.exec("INSERT INTO venta_cupo_ganadores (ch) VALUES (?)", {centro});
            d.exec(sql, params);
        });
        ctx_.dialogs.inform(kTituloCupos, kExito);
        return true;
    });
}

// ---------------------------------------------------------------- race switches

bool AdminGanadores::guardarCarrera(bool abrir) {
    return seguro(kTituloCarreras, [&] {
        const auto id = idHipodromo(true);
        if (!id) return false;
        if (abrir) {
            const Recordset rs =
                db().query("SELECT *  FROM carreras  where carrera = ? and fecha  = ? and id_hipodromo = ?",
                           {carrera, fecha, *id});
            bool procesada = false;
            for (const Row& r : rs) procesada = procesada || r.number("dividendo") > 0;
            if (procesada && !ctx_.dialogs.confirm(kTituloProceso,
                                                   QStringLiteral("Esta apunto de abrir una carrera ya procesada"),
                                                   true, Icon::Critical))
                return false;
        }
        db().exec("update carreras set venta= ? Where carrera = ? and fecha = ? and id_hipodromo = ?",
                  {abrir ? 1 : 0, carrera, fecha, *id});
        ctx_.dialogs.inform(kTituloCarreras, kExito);
        return true;
    });
}

std::optional<AdminGanadores::Switches> AdminGanadores::switchesCarrera() {
    std::optional<Switches> out;
    seguro(kTituloCarreras, [&] {
        const auto id = idHipodromo(false);
        if (!id) return false;
        const Recordset rs = db().query("SELECT venta,venta_rm,venta_mc,venta_tf,estado_puestos FROM carreras where "
                                        "carrera = ? and fecha = ? and id_hipodromo = ? order by id_carrera limit 1",
                                        {carrera, fecha, *id});
        if (rs.empty()) return false;
        const Row& r = rs.first();
        out = Switches{r.toInt("venta"), r.toInt("venta_rm"), r.toInt("venta_mc"), r.toInt("venta_tf"),
                       r.toInt("estado_puestos")};
        return true;
    });
    return out;
}

bool AdminGanadores::guardarSwitches(const Switches& s) {
    return seguro(kTituloCarreras, [&] {
        const auto id = idHipodromo(true);
        if (!id) return false;
        auto flag = [](int v) { return v != 0 ? 1 : 0; };
        db().exec("update carreras set estado_puestos= ?,venta= ?,venta_rm= ?,venta_mc= ?,venta_tf= ? Where "
                  "carrera = ? and fecha = ? and id_hipodromo = ?",
                  {flag(s.puestos), flag(s.ganadores), flag(s.remate), flag(s.macuare), flag(s.tablaFija), carrera,
                   fecha, *id});
        ctx_.dialogs.inform(kTituloCarreras, kExito);
        return true;
    });
}

// ---------------------------------------------------------------- dividend rule

QMap<QString, QString> AdminGanadores::reglaCentro() {
    QMap<QString, QString> out;
    seguro(kTituloDividendos, [&] {
        const Recordset g = esTodos(centro) ? Recordset()
                                            : db().query("SELECT * FROM grupos where ch = ? order by id_grupo limit 1",
                                                         {centro});
        if (g.empty()) return false;
        Row regla = g.first();
        const auto id = idHipodromo(false);
        if (porHipodromo()) {
            if (!id) return false;
            const Recordset d =
                db().query("select * from dividendos where ch= ? and id_hipodromo= ?", {centro, *id});
            regla = d.empty() ? Row() : d.first();
        }
        for (const QString& c : columnasRegla()) out.insert(c, regla.has(c) ? regla.text(c) : QStringLiteral("0"));
        out.insert("divopc", g.first().text("divopc"));
        out.insert("mododiv", g.first().text("mododiv"));
        if (id) {
            const Recordset a =
                db().query("select * from dividendos_ampliados where ch= ? and id_hipodromo= ?", {centro, *id});
            for (const QString& c : columnasAmpliadas())
                out.insert(c, !a.empty() ? a.first().text(c) : QStringLiteral("0"));
        }
        return true;
    });
    return out;
}

bool AdminGanadores::guardarRegla(const QMap<QString, QString>& campos) {
    if (esTodos(centro)) {
        ctx_.dialogs.refuse(kTituloVerifique, QStringLiteral("DEBE SELECCIONAR UN CENTRO HIPICO"));
        return false;
    }
    // Every field is checked before anything is written.
    auto leer = [&](const QString& c, Params& params) {
        const QString t = campos.value(c, QStringLiteral("0")).trimmed();
        double v = 0;
        bool ok = leerMonto(t.isEmpty() ? QStringLiteral("0") : t, v) && std::abs(v) <= kMontoMaximo;
        if (ok && columnaEntera(c)) ok = v == std::floor(v);
        if (!ok) {
            ctx_.dialogs.refuse(kTituloVerifique, QStringLiteral("EL CAMPO %1 NO ES VALIDO").arg(c.toUpper()));
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
    if (empate == int(ModoEmpate::GeneralMinimo) && campos.value("empatemin").toDouble() <= 0) {
        ctx_.dialogs.refuse(QStringLiteral("VERIFICAR SELECCION"),
                            QStringLiteral("DEBE SELECCIONAR UNA OPCION CORRECTA EN EL MINIMO"));
        return false;
    }

    return seguro(kTituloDividendos, [&] {
        const auto id = idHipodromo(true);
        if (!id) return false;
        auto asignaciones = [](const QStringList& columnas) {
            std::string s;
            for (const QString& c : columnas) s += (s.empty() ? "`" : ",`") + c.toStdString() + "`= ?";
            return s;
        };
        Db& d = db();
        d.inTransaction([&] {
            if (porHipodromo()) {
                if (Row::toInteger(d.scalar("SELECT count(*) FROM dividendos where ch = ? and id_hipodromo = ?",
                                            {centro, *id})) == 0)
                    d.exec("INSERT INTO dividendos (ch, id_hipodromo) VALUES (?, ?)", {centro, *id});
                Params p = regla;
                p.push_back(centro);
                p.push_back(*id);
                d.exec("update dividendos set " + asignaciones(columnasRegla()) + " Where ch = ? and id_hipodromo = ?",
                       p);
                Params m = modo;
                m.push_back(centro);
                d.exec("update grupos set divopc= ?,mododiv= ? Where ch = ?", m);
            } else {
                Params p = regla;
                p.insert(p.end(), modo.begin(), modo.end());
                p.push_back(centro);
                d.exec("update grupos set " + asignaciones(columnasRegla() + QStringList{"divopc", "mododiv"}) +
                           " Where ch = ?",
                       p);
            }
            if (Row::toInteger(d.scalar("SELECT count(*) FROM dividendos_ampliados where ch = ? and id_hipodromo = ?",
                                        {centro, *id})) == 0)
                d.exec("INSERT INTO dividendos_ampliados (ch, id_hipodromo) VALUES (?, ?)", {centro, *id});
            Params a = ampliada;
            a.push_back(centro);
            a.push_back(*id);
            d.exec("update dividendos_ampliados set " + asignaciones(columnasAmpliadas()) +
                       " Where ch = ? and id_hipodromo = ?",
                   a);
        });
        ctx_.dialogs.inform(kTituloDividendos, kExito);
        return true;
    });
}

// ---------------------------------------------------------------- result

bool AdminGanadores::procesarCarrera(const QString& ganador, const QString& dividendo, const QString& ganador2,
                                     const QString& dividendo2) {
    return seguro(kTituloProceso, [&] {
        // 1. Track.
        const auto id = idHipodromo(true);
        if (!id) return false;
        // 2. Official dividends ("," or "." as decimal point).
        const bool empate = !ganador2.trimmed().isEmpty();
        const auto d1 = monto(dividendo);
        const auto d2 = empate ? monto(dividendo2) : std::optional<double>(0.0);
        if (!d1 || *d1 <= 0 || !d2 || (empate && *d2 <= 0)) {
            ctx_.dialogs.refuse(kTituloValidacion, QStringLiteral("EL DIVIDENDO NO ES VALIDO"));
            return false;
        }
        // 4. A processed race is processed again only when the administrator says so.
        const Recordset procesada =
            db().query("SELECT *  FROM carreras  where carrera = ? and fecha  = ? and dividendo > 0 and "
                       "id_hipodromo  = ?",
                       {carrera, fecha, *id});
        if (!procesada.empty() &&
            !ctx_.dialogs.confirm(kTituloProceso,
                                  QStringLiteral("Esta carrera ya fue procesada, ¿Desea hacerlo de nuevo?")))
            return false;
        // 5. The winners: running horses of the race.
        auto corre = [&](const QString& texto) -> std::optional<long long> {
            const auto n = entero(texto);
            if (!n || *n == 0) return std::nullopt;
            const long long c = Row::toInteger(db().scalar(
                "SELECT count(*) FROM carreras where carrera = ? and fecha = ? and nu_caballo = ? and "
                "id_hipodromo = ? and retirado = 0",
                {carrera, fecha, *n, *id}));
            if (c == 0) return std::nullopt;
            return n;
        };
        const auto g1 = corre(ganador);
        const auto g2 = empate ? corre(ganador2) : std::optional<long long>(0);
        if (!g1 || !g2 || (empate && *g1 == *g2)) {
            ctx_.dialogs.refuse(kTituloValidacion, QStringLiteral("DEBE COLOCAR UN Nº CABALLO VALIDO"));
            return false;
        }

        PeticionProceso p;
        p.fecha = fecha;
        p.carrera = carrera;
        p.idHipodromo = *id;
        p.centro = centro;
        p.ganadores << GanadorOficial{*g1, *d1};
        if (empate) p.ganadores << GanadorOficial{*g2, *d2};
        p.pagarOficial = pagarOficial;
        p.porHipodromo = porHipodromo();
        ultimo_ = hipico::procesarCarrera(db(), p);
        ctx_.dialogs.inform(kTituloAplicacion, QStringLiteral("CARRERA PROCESADA CON EXITO"));
        return true;
    });
}

bool AdminGanadores::limpiarCarrera() {
    return seguro(kTituloCarreras, [&] {
        if (!ctx_.dialogs.confirm(QStringLiteral("Limpieza de Carrera"), QStringLiteral("Desea limpiar la carrera"),
                                  true))
            return false;
        db().exec("update ma_principal set estatus=0,cobrado=0,llave3=0,llave4=0,llave6=0  where carrera = ? and "
                  "fecha  = ? and estatus <> 4 and estatus<> 3 and estatus <> 2  ",
                  {carrera, fecha});
        ctx_.dialogs.inform(kTituloCarreras, QStringLiteral("SE HA LIMPIADO LA CARRERA  CON EXITO"));
        return true;
    });
}

bool AdminGanadores::anularCarrera() {
    return seguro(kTituloAnulacionCarrera, [&] {
        if (!ctx_.dialogs.confirm(kTituloAnulacionCarrera, QStringLiteral("Desea anular la carrera"), true))
            return false;
        devolverBoletos(db(), fecha, carrera, grupo, 0, valorGanador());
        ctx_.dialogs.inform(kTituloAnulacionCarrera, kExito);
        return true;
    });
}

bool AdminGanadores::retirarCaballo(const QString& caballo) {
    const auto n = entero(caballo);
    if (!n || *n == 0) {
        ctx_.dialogs.refuse(kTituloVerifique, QStringLiteral("EL NUMERO DE CABALLO NO ES VALIDO"));
        return false;
    }
    return seguro(QStringLiteral("Anulacion de Caballo"), [&] {
        if (!ctx_.dialogs.confirm(QStringLiteral("Anulacion de Caballo"), QStringLiteral("Desea retirar el caballo"),
                                  true))
            return false;
        devolverBoletos(db(), fecha, carrera, grupo, *n, valorGanador());
        ctx_.dialogs.inform(QStringLiteral("Anulacion de Caballo"), kExito);
        return true;
    });
}

bool AdminGanadores::devolverCuatroCaballos() {
    if (!grupoElegido()) {
        ctx_.dialogs.refuse(kTituloAnulacionCarrera, QStringLiteral("DEBE SELECCIONAR UN GRUPO"));
        return false;
    }
    return seguro(kTituloAnulacionCarrera, [&] {
        if (!ctx_.dialogs.confirm(kTituloAnulacionCarrera, QStringLiteral("Desea devolver la jugada con 4 caballos?"),
                                  true))
            return false;
        const double vr2 = Row::toNumber(db().scalar("SELECT `4cabvr2` FROM grupos where grupo = ?", {grupo}));
        if (vr2 != -1) {
            ctx_.dialogs.refuse(kTituloAnulacionCarrera,
                                QStringLiteral("EL GRUPO NO DEVUELVE LAS JUGADAS CON 4 CABALLOS"));
            return false;
        }
        devolverBoletos(db(), fecha, carrera, grupo, 0, valorGanador());
        ctx_.dialogs.inform(kTituloAnulacionCarrera, kExito);
        return true;
    });
}

// ---------------------------------------------------------------- lay-offs and conditioned amounts

bool AdminGanadores::registrarDescarga(const QString& caballo, const QString& montoTexto) {
    const QString titulo = kTituloVerifique;
    return seguro(titulo, [&] {
        if (!grupoElegido()) {
            ctx_.dialogs.refuse(titulo, QStringLiteral("DEBE SELECCIONAR UN GRUPO"));
            return false;
        }
        const auto m = monto(montoTexto);
        if (!m || *m <= 0) {
            ctx_.dialogs.refuse(titulo, QStringLiteral("EL MONTO DE LA JUGADA NO ES VALIDO"));
            return false;
        }
        const Recordset g = db().query("SELECT ch,subgrupo,cab_max FROM grupos where grupo = ?", {grupo});
        const auto n = entero(caballo);
        if (g.empty() || !n || *n == 0 || *n > g.first().integer("cab_max")) {
            ctx_.dialogs.refuse(titulo, QStringLiteral("EL NUMERO DE CABALLO NO ES VALIDO"));
            return false;
        }
        const auto id = idHipodromo(true);
        if (!id) return false;
        const long long abiertas = Row::toInteger(db().scalar(
            "SELECT count(*) FROM carreras where carrera = ? and fecha = ? and id_hipodromo = ? and venta = 1",
            {carrera, fecha, *id}));
        if (abiertas == 0) {
            ctx_.dialogs.refuse(titulo, QStringLiteral("LA CARRERA SE ENCUENTRA CERRADA"));
            return false;
        }
        const Recordset c = db().query("SELECT * FROM carreras where  carrera = ? and fecha  = ? and nu_caballo= ? "
                                       "and id_hipodromo = ?",
                                       {carrera, fecha, *n, *id});
        if (c.empty()) {
            ctx_.dialogs.refuse(titulo, QStringLiteral("EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA"));
            return false;
        }
        if (c.first().integer("retirado") != 0) {
            ctx_.dialogs.refuse(titulo, QStringLiteral("EL CABALLO ESTA RETIRADO"));
            return false;
        }
        db().exec("INSERT INTO `descargas` VALUES (NULL,?,?,?,?,?,?,?,?)",
                  {fecha, horaTexto(ctx_.clock.now().time()), g.first().text("ch"), grupo, carrera, *n, *m, 0.0});
        ctx_.dialogs.inform(QStringLiteral("Descargas"), QStringLiteral("Jugada registrada con exito"));
        return true;
    });
}

AdminGanadores::Descargas AdminGanadores::descargas() {
    Descargas d;
    seguro(QStringLiteral("Descargas"), [&] {
        d.filas = grupoElegido() ? db().query("SELECT * FROM descargas Where fecha= ? AND grupo = ?", {fecha, grupo})
                                 : db().query("SELECT * FROM descargas Where fecha= ?", {fecha});
        for (const Row& r : d.filas) {
            d.sumaganadores += r.number("ganadores");
            d.sumacobrado += r.number("cobrado");
        }
        return true;
    });
    return d;
}

bool AdminGanadores::registrarCondicionado(const QString& caballo, const QString& montoTexto) {
    return seguro(kTituloCondicionados, [&] {
        if (!grupoElegido()) {
            ctx_.dialogs.refuse(kTituloCondicionados, QStringLiteral("DEBE SELECCIONAR UN GRUPO"));
            return false;
        }
        const auto m = monto(montoTexto);
        if (!m || *m <= 0) {
            ctx_.dialogs.refuse(kTituloCondicionados, QStringLiteral("EL MONTO NO ES VALIDO"));
            return false;
        }
        const auto id = idHipodromo(true);
        if (!id) return false;
        const auto n = entero(caballo);
        const long long existe =
            n ? Row::toInteger(db().scalar("SELECT count(*) FROM carreras where carrera = ? and fecha = ? and "
                                           "nu_caballo = ? and id_hipodromo = ?",
                                           {carrera, fecha, *n, *id}))
              : 0;
        if (existe == 0) {
            ctx_.dialogs.refuse(kTituloCondicionados,
                                QStringLiteral("EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA"));
            return false;
        }
        const Recordset g = db().query("SELECT ch,subgrupo FROM grupos where grupo = ?", {grupo});
        if (g.empty()) return false;
        db().exec("INSERT INTO `condicionados` VALUES (NULL,?,?,?,?,?,?,?)",
                  {g.first().text("ch"), grupo, g.first().text("subgrupo"), fecha, carrera, *n, *m});
        ctx_.dialogs.inform(kTituloCondicionados, kExito);
        return true;
    });
}

Recordset AdminGanadores::condicionados() {
    Recordset rs;
    seguro(kTituloCondicionados, [&] {
        rs = db().query("SELECT  *  FROM condicionados WHERE  fecha  = ? and grupo = ? and carrera = ? order by "
                        "id_condicionado desc   ",
                        {fecha, grupo, carrera});
        return true;
    });
    return rs;
}

bool AdminGanadores::eliminarCondicionado(long long id) {
    return seguro(QStringLiteral("Eliminacion de Registros"), [&] {
        if (db().exec("delete from  condicionados  Where id_condicionado = ?", {id}) == 0) return false;
        ctx_.dialogs.inform(QStringLiteral("Eliminacion de Registros"),
                            QStringLiteral("EL registro fue eliminado con exito"));
        return true;
    });
}

}  // namespace hipico
