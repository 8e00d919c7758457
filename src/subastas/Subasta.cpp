#include "subastas/Subasta.h"

#include "core/Claves.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "races/Hipodromos.h"
#include "sales/ImpresoraTaquilla.h"
#include "schema/Escritores.h"
#include "subastas/ImpresosSubasta.h"

#include <QSet>
#include <stdexcept>

namespace hipico {

namespace {

constexpr int kLargoMensaje = 255;

const QString kTituloConfirmar = QStringLiteral("confirmar");
const QString kTituloPagoMinimo = QStringLiteral("APLICAR EL PAGO MINIMO A LA SUBASTA");
const QString kTituloMinimoHecho = QStringLiteral("APLICAR MINIMO A LA SUBASTA");
const QString kTituloDoblaje = QStringLiteral("APLICAR EL DOBLAJE A LA SUBASTA");
const QString kDoblaje = QStringLiteral("DOBLAJE DE LA SUBASTA");
const QString kTituloPorcentaje = QStringLiteral("Cambio de Porcentaje");
const QString kTituloParametros = QStringLiteral("Modificacion de Parametros");
const QString kRedondear = QStringLiteral("REDONDEAR REMATE");
const QString kCambiosHechos = QStringLiteral("Los cambios fuero hechos con exito");
const QString kIngreseCarrera = QStringLiteral("Ingrese el numero de la carrera");

std::string columna(const QString& c) { return c.toStdString(); }
QString tabla(int t) { return QStringLiteral("tabla%1").arg(t); }
QString mesa(int t) { return QStringLiteral("mesa%1").arg(t); }

// "tabla1=0,...,mesa1=?,..." over the given tables (each buyer takes a bound text).
std::string limpiarTablas(const QVector<int>& tablas, Params& valores, const QString& comprador) {
    std::string s;
    for (int t : tablas) s.append(s.empty() ? "" : ",").append(columna(tabla(t))).append("=0");
    for (int t : tablas) {
        s.append(",").append(columna(mesa(t))).append("=?");
        valores.push_back(comprador);
    }
    return s;
}

}  // namespace

Subasta::Subasta(Context& ctx, const DisenoSubasta& diseno) : ctx_(ctx), diseno_(diseno) {}

QStringList Subasta::hipodromos() { return nombresHipodromos(ctx_, true); }

QString Subasta::hipodromoPorDefecto() {
    return Row::toText(ctx_.servidor().scalar(
        "select h.hipodromo from hipodromos h, configuracion c where h.id_hipodromo = c.id_hipodromo"));
}

QStringList Subasta::carreras(const QString& hipodromo) {
    QStringList out;
    const auto id = idHipodromo(ctx_, hipodromo);
    if (!id) return out;
    Db& db = ctx_.servidor();
    const QString fecha = Row::toText(db.scalar("SELECT fecha FROM configuracion"));
    for (const Row& r : db.query("SELECT carrera FROM carreras Where fecha = ? and id_hipodromo = ? and venta_rm=1 "
                                 "group by carrera order by min(id_carrera)",
                                 {fecha, *id}))
        out << r.text("carrera");
    return out;
}

Subasta::Estado Subasta::CargarCarrera(const QString& hipodromo, long long carrera) {
    return cargar(hipodromo, carrera, false);
}

Subasta::Estado Subasta::CargarCarreraTablita(const QString& hipodromo, long long carrera) {
    return cargar(hipodromo, carrera, diseno_.dosSubastas());
}

void Subasta::MostrarCarrera(bool tablita) {
    tablita_ = tablita && diseno_.dosSubastas();
    desbordeAvisado_ = false;
}

Subasta::Estado Subasta::cargar(const QString& hipodromo, long long carrera, bool tablita) {
    Db& db = ctx_.servidor();
    estado_ = Estado::SinCarrera;
    filas_ = Recordset();
    huella_.clear();
    tablita_ = tablita;
    desbordeAvisado_ = false;
    const auto id = idHipodromo(ctx_, hipodromo);
    if (!id) {
        ctx_.dialogs.refuse(kTituloSubasta, QStringLiteral("DEBE ELEGIR UN HIPODROMO DE LA LISTA"));
        return estado_;
    }
    const Row conf = db.query("SELECT fecha, venta_remate FROM configuracion").first();
    fecha_ = conf.text("fecha");
    const QVariant ventaRm = db.scalar("SELECT max(venta_rm) FROM carreras Where carrera = ? and fecha = ? and "
                                       "id_hipodromo = ?",
                                       {carrera, fecha_, *id});
    if (ventaRm.isNull()) {
        ctx_.dialogs.refuse(kTituloSubasta, texto::CarreraNoPermitida);
        return estado_;
    }
    hipodromo_ = hipodromo;
    idHipodromo_ = *id;
    carrera_ = carrera;
    parametros_ = leerParametros(db, ctx_.session.grupo);
    parametros_.ch = ctx_.session.ch;
    porcentaje_ = parametros_.porRemate;
    const bool abierta = Row::toInteger(ventaRm) != 0 && conf.integer("venta_remate") != 0;
    if (abierta && !esSocio()) {
        crearFilas(db, *id);
        db.exec("update carreras_remate set porcentaje=?  Where carrera = ? and fecha = ? and ch = ?",
                {porcentaje_, carrera_, fecha_, ctx_.session.ch});
    }
    leerFilas();
    // Loaded: from here on the board shows the race.
    estado_ = abierta ? Estado::Abierta : Estado::Cerrada;
    refrescar();
    return estado_;
}

void Subasta::crearFilas(Db& db, long long idHipodromo) {
    const QString& ch = ctx_.session.ch;
    db.inTransaction([&] {
        // Two boards loading the same race wait for each other on the race's
        // horses; the second one finds the rows the first one created. On two
        // nodes of a cluster the locks do not meet: the board's unique key
        // (race, centre, horse number) does, and the second one runs again.
        const Recordset caballos = db.query("select * from carreras where carrera = ? and fecha = ? and "
                                            "id_hipodromo = ? order by id_carrera FOR UPDATE",
                                            {carrera_, fecha_, idHipodromo});
        const long long hay = Row::toInteger(db.scalar(
            "SELECT count(*) FROM carreras_remate Where carrera = ? and fecha = ? and ch = ? FOR UPDATE",
            {carrera_, fecha_, ch}));
        if (hay > 0 || caballos.empty()) return;
        std::vector<Insercion> filas;
        QSet<long long> numeros;
        for (const Row& c : caballos) {
            // One line per horse number: a number entered twice on the card
            // gets the line of its first entry.
            if (numeros.contains(c.integer("nu_caballo"))) continue;
            numeros.insert(c.integer("nu_caballo"));
            filas.push_back(FilaRemate{fecha_, carrera_, c.text("caballo"), c.integer("nu_caballo"),
                                       static_cast<int>(c.integer("retirado")), ch, porcentaje_}
                                .insercion());
        }
        insertarFilas(db, filas);
    });
}

void Subasta::leerFilas() {
    filas_ = filasCarrera(ctx_.servidor(), fecha_, carrera_, ctx_.session.ch);
}

bool Subasta::esSocio() const { return ctx_.session.nivel == nivel::Socio; }

bool Subasta::soloLectura() const { return esSocio() || estado_ != Estado::Abierta; }

QVector<Subasta::Linea> Subasta::lineas() const {
    QVector<Linea> out;
    const LadoSubasta& l = lado();
    for (int i = 0; i < std::min(filas_.size(), kLineasTablero); ++i) {
        const Row& r = filas_[i];
        Linea linea;
        linea.id = r.integer("id_carrera");
        linea.numero = r.toInt("nu_caballo");
        linea.caballo = r.text("caballo");
        const int retirado = r.toInt("retirado");
        linea.retirado = retirado != 0;
        linea.invalidada = r.integer(l.invalidado) == 1;
        if (retirado == 2 || linea.invalidada) linea.estado = subasta::Invalidado;
        else if (retirado == 1) linea.estado = subasta::Retirado;
        for (int t : l.tablas) {
            linea.mesas << r.text(mesa(t));
            linea.montos << r.number(tabla(t));
        }
        if (!l.tablaCasa.isEmpty()) linea.tablaCasa = r.number(l.tablaCasa);
        out << linea;
    }
    return out;
}

TotalesSubasta Subasta::Calcular() {
    TotalesSubasta t = calcularTotales(filas_, lado(), parametros_, porcentaje_);
    if (t.desborde && !desbordeAvisado_)
        ctx_.dialogs.refuse(kTituloSubasta, QStringLiteral("LA COMISION ES DEMASIADO GRANDE PARA REDONDEARLA: SE "
                                                           "MUESTRA SIN REDONDEAR"));
    desbordeAvisado_ = t.desborde;
    return t;
}

// ---------------------------------------------------------------- cells

bool Subasta::puedeEscribir() {
    if (esSocio() || estado_ == Estado::SinCarrera) return false;
    if (estado_ == Estado::Cerrada) {
        ctx_.dialogs.refuse(kTituloSubasta, subasta::Cerrado);
        return false;
    }
    return true;
}

std::optional<long long> Subasta::idLinea(int linea) const {
    if (linea < 0 || linea >= std::min(filas_.size(), kLineasTablero)) return std::nullopt;
    return filas_[linea].integer("id_carrera");
}

bool Subasta::tablaDelTablero(int t) const { return lado().tablas.contains(t); }

bool Subasta::escribirLinea(int linea, const std::string& sql, Params valores) {
    const auto id = idLinea(linea);
    if (!id) return false;
    valores.insert(valores.end(), {carrera_, *id, fecha_, ctx_.session.ch});
    // As a transaction of its own: a cell written at the same time from a
    // machine on another node of a cluster aborts one of the two, which is
    // written again.
    Db& db = ctx_.servidor();
    db.inTransaction([&] { db.exec(sql + " Where carrera = ?  and id_carrera = ? and fecha= ? and ch= ? ", valores); });
    leerFilas();
    return true;
}

bool Subasta::escribirMonto(int linea, int t, const QString& texto) {
    if (!tablaDelTablero(t) || !puedeEscribir()) return false;
    const auto monto = montoSubasta(texto, ctx_.dialogs);
    if (!monto) return false;
    return escribirLinea(linea, "update carreras_remate set " + columna(tabla(t)) + "=?", {*monto});
}

bool Subasta::escribirComprador(int linea, int t, const QString& texto) {
    if (!tablaDelTablero(t) || !puedeEscribir()) return false;
    const auto comprador = compradorSubasta(texto, ctx_.dialogs);
    if (!comprador) return false;
    return escribirLinea(linea, "update carreras_remate set " + columna(mesa(t)) + "=?", {*comprador});
}

bool Subasta::escribirTablaCasa(int linea, const QString& texto) {
    if (lado().tablaCasa.isEmpty() || !puedeEscribir()) return false;
    const auto monto = montoSubasta(texto, ctx_.dialogs);
    if (!monto) return false;
    return escribirLinea(linea, "update carreras_remate set " + columna(lado().tablaCasa) + "=?", {*monto});
}

bool Subasta::escribirPote(const QString& texto) {
    if (!puedeEscribir()) return false;
    const auto monto = montoSubasta(texto, ctx_.dialogs);
    if (!monto) return false;
    ctx_.servidor().exec("update carreras_remate set " + columna(lado().pote) +
                             "=? Where carrera = ?  and fecha= ? and ch= ? ",
                         {*monto, carrera_, fecha_, ctx_.session.ch});
    leerFilas();
    return true;
}

bool Subasta::invalidar(int linea) {
    if (!puedeEscribir() || !idLinea(linea)) return false;
    const LadoSubasta& l = lado();
    if (filas_[linea].integer(l.invalidado) == 1)
        return escribirLinea(linea, "update carreras_remate set " + columna(l.invalidado) + "=0", {});
    Params valores;
    std::string sql = "update carreras_remate set " + limpiarTablas(l.tablas, valores, diseno_.textoInvalidado);
    if (!l.tablaCasa.isEmpty()) sql += "," + columna(l.tablaCasa) + "=0";
    return escribirLinea(linea, sql + "," + columna(l.invalidado) + "=1", valores);
}

bool Subasta::retirar(int linea, bool retirado) {
    if (!puedeEscribir() || !idLinea(linea)) return false;
    if (!retirado) return escribirLinea(linea, "update carreras_remate set retirado=0", {});
    const QVector<int> tablas = diseno_.todasLasTablas();
    bool vendida = false;
    for (int t : tablas) vendida = vendida || filas_[linea].number(tabla(t)) > 0;
    // A board that voids a sold line as scratched marks its buyers and the line.
    const bool anular = diseno_.anulaComoRetiro && vendida;
    Params valores;
    const std::string sql =
        "update carreras_remate set " + limpiarTablas(tablas, valores, anular ? subasta::Invalidado : QString());
    return escribirLinea(linea, sql + (anular ? ",retirado=2" : ",retirado=1"), valores);
}

// ---------------------------------------------------------------- pot and percentage

bool Subasta::RedondearRemate() {
    if (!puedeEscribir()) return false;
    const auto tecleado = ctx_.dialogs.ask(kRedondear, QStringLiteral("Ingrese el monto final"),
                                           QString::number(filas_.empty() ? 0 : filas_.first().number(lado().pote)));
    if (!tecleado) return false;
    return escribirPote(*tecleado);
}

std::optional<long long> Subasta::carreraPedida(const QString& titulo) {
    const auto tecleada = ctx_.dialogs.ask(titulo, kIngreseCarrera, QString::number(carrera_));
    if (!tecleada) return std::nullopt;
    const auto carrera = leerEntero(*tecleada, 99);
    if (!carrera || *carrera == 0) {
        ctx_.dialogs.refuse(titulo, QStringLiteral("EL NUMERO DE CARRERA NO ES VALIDO"));
        return std::nullopt;
    }
    return carrera;
}

bool Subasta::AplicarPagoMinimo() {
    if (diseno_.ajuste != AjustePote::PagoMinimo || esSocio() || estado_ == Estado::SinCarrera) return false;
    if (!ctx_.dialogs.confirm(kTituloConfirmar,
                              QStringLiteral(" ¿Esta seguro de querer aplicar el pago minimo a la Subasta?")))
        return false;
    const auto carrera = carreraPedida(kTituloPagoMinimo);
    if (!carrera) return false;
    Db& db = ctx_.servidor();
    const Recordset filas = filasCarrera(db, fecha_, *carrera, ctx_.session.ch);
    if (filas.empty()) {
        ctx_.dialogs.refuse(kTituloPagoMinimo, kSinSubasta);
        return false;
    }
    const double venta = liquidarCarrera(filas, diseno_.grande, 0).venta;
    const double x = leerParametros(db, ctx_.session.grupo).minimoRemate - venta;
    if (x <= 0) {
        ctx_.dialogs.inform(kTituloMinimoHecho, QStringLiteral("LA VENTA DE LA CARRERA YA CUBRE EL PAGO MINIMO"));
        return false;
    }
    // The small board takes the big board's pot plus the difference.
    db.exec(tablita_ ? "update carreras_remate set pote2=pote+? Where carrera = ?  and fecha= ? and ch= ? "
                     : "update carreras_remate set pote=pote+? Where carrera = ?  and fecha= ? and ch= ? ",
            {x, *carrera, fecha_, ctx_.session.ch});
    ctx_.dialogs.inform(kTituloMinimoHecho, kCambiosHechos);
    leerFilas();
    return true;
}

bool Subasta::AplicarDoblaje() {
    if (diseno_.ajuste != AjustePote::Doblaje || esSocio() || estado_ == Estado::SinCarrera) return false;
    const auto carrera = carreraPedida(kTituloDoblaje);
    if (!carrera) return false;
    Db& db = ctx_.servidor();
    const Recordset filas = filasCarrera(db, fecha_, *carrera, ctx_.session.ch);
    const double monto =
        liquidarCarrera(filas, diseno_.grande, 0).venta * leerParametros(db, ctx_.session.grupo).doblaje / 100;
    if (filas.empty() || monto <= 0) {
        ctx_.dialogs.refuse(kDoblaje, QStringLiteral("LA CARRERA NO TIENE MONTO PARA DOBLAR"));
        return false;
    }
    db.exec("update carreras_remate set pote=pote + ? Where carrera = ?  and fecha= ? and ch= ? ",
            {monto, *carrera, fecha_, ctx_.session.ch});
    ctx_.dialogs.inform(kDoblaje, kCambiosHechos);
    leerFilas();
    return true;
}

bool Subasta::CambiarPorcentaje() {
    if (!diseno_.cambioPorcentaje || esSocio()) return false;
    const auto clave = ctx_.dialogs.ask(texto::TituloSeguridad, QStringLiteral("Ingrese la clave de seguridad "));
    if (!clave) return false;
    Db& db = ctx_.servidor();
    bool aceptada = false;
    for (const Row& g : db.query("SELECT clave FROM usuarios Where nivel = 'Gerente' and  grupo= ?",
                                 {ctx_.session.grupo}))
        aceptada = aceptada || claveCorrecta(g.text("clave"), *clave);
    if (!aceptada) {
        ctx_.dialogs.refuse(texto::TituloSeguridad, QStringLiteral("LA CLAVE NO ES CORRECTA"));
        return false;
    }
    const auto tecleado = ctx_.dialogs.ask(kTituloPorcentaje, QStringLiteral("Ingrese el porcentaje del remate "),
                                           QString::number(porcentaje_));
    if (!tecleado) return false;
    double nuevo = 0;
    if (!leerMonto(*tecleado, nuevo) || nuevo < 0 || nuevo > 100) {
        ctx_.dialogs.refuse(kTituloPorcentaje, QStringLiteral("EL PORCENTAJE NO ES VALIDO"));
        return false;
    }
    db.exec("update grupos set por_remate=? Where   grupo= ? limit 1 ", {nuevo, ctx_.session.grupo});
    // The session and the loaded race take it at once.
    ctx_.session.porRemate = QString::number(nuevo);
    porcentaje_ = nuevo;
    parametros_.porRemate = nuevo;
    if (estado_ == Estado::Abierta) {
        db.exec("update carreras_remate set porcentaje=?  Where carrera = ? and fecha = ? and ch = ?",
                {nuevo, carrera_, fecha_, ctx_.session.ch});
        leerFilas();
    }
    ctx_.dialogs.inform(kTituloParametros, QStringLiteral("Los cambios se han hecho con exito"));
    return true;
}

// ---------------------------------------------------------------- message and refresh

bool Subasta::enviarMensaje(const QString& texto) {
    if (esSocio()) return false;
    if (texto.size() > kLargoMensaje) {
        ctx_.dialogs.refuse(kTituloSubasta, QStringLiteral("EL MENSAJE ES DEMASIADO LARGO"));
        return false;
    }
    ctx_.servidor().exec("update  grupos set mensajech=?  where grupo=?", {texto, ctx_.session.grupo});
    mensaje_ = texto;
    return true;
}

QString Subasta::huella(const Row& r) const {
    return r.text("filas") + '|' + r.text("huella") + '|' + r.text("venta_rm") + '|' + r.text("venta_remate");
}

bool Subasta::refrescar() {
    Db& db = ctx_.servidor();
    if (!cargada()) {
        const QString m = Row::toText(db.scalar("select mensajech from grupos where grupo=?", {ctx_.session.grupo}));
        const bool cambio = m != mensaje_;
        mensaje_ = m;
        return cambio;
    }
    const Row r = db.query(
                        "SELECT COUNT(*) AS filas, COALESCE(SUM(CRC32(CONCAT_WS('|', id_carrera, retirado, mesa1, "
                        "tabla1, mesa2, tabla2, mesa3, tabla3, mesa4, tabla4, mesa5, tabla5, pote, pote2, tablacasa, "
                        "tablacasa2, invalidado, invalidado2, porcentaje, win, win2, segundolugar, monto_casa, "
                        "monto_casa2))), 0) AS huella, "
                        "(SELECT mensajech FROM grupos WHERE grupo = ? LIMIT 1) AS mensaje, "
                        "(SELECT venta_remate FROM configuracion LIMIT 1) AS venta_remate, "
                        "(SELECT max(venta_rm) FROM carreras WHERE carrera = ? AND fecha = ? AND id_hipodromo = ?) "
                        "AS venta_rm FROM carreras_remate WHERE carrera = ? AND fecha = ? AND ch = ?",
                        {ctx_.session.grupo, carrera_, fecha_, idHipodromo_, carrera_, fecha_, ctx_.session.ch})
                        .first();
    bool cambio = false;
    if (r.text("mensaje") != mensaje_) {
        mensaje_ = r.text("mensaje");
        cambio = true;
    }
    const QString nueva = huella(r);
    if (nueva != huella_) {
        huella_ = nueva;
        estado_ = r.integer("venta_rm") != 0 && r.integer("venta_remate") != 0 ? Estado::Abierta : Estado::Cerrada;
        leerFilas();
        // A race opened for auction while it was shown closed gets its rows.
        if (estado_ == Estado::Abierta && filas_.empty() && !esSocio()) {
            crearFilas(db, idHipodromo_);
            leerFilas();
        }
        cambio = true;
    }
    return cambio;
}

// ---------------------------------------------------------------- printing

QString Subasta::tituloImpreso(const DisenoSubasta& d, ImpresoSubasta cual) {
    switch (cual) {
    case ImpresoSubasta::Boleto: return QStringLiteral("BOLETO REMATE");
    case ImpresoSubasta::ReporteRemate: return QStringLiteral("REPORTE REMATE");
    case ImpresoSubasta::FinalDia: return d.tituloFinal;
    case ImpresoSubasta::FinalTG: return QStringLiteral("     REPORTE FINAL TG");
    case ImpresoSubasta::FinalTP: return QStringLiteral("     REPORTE FINAL TP");
    case ImpresoSubasta::GanadoresRemate: return QStringLiteral("GANADORES REMATE");
    case ImpresoSubasta::JugadoRemate: return QStringLiteral("JUGADO REMATE");
    }
    return {};
}

void Subasta::guardarMontosDelDia() {
    Db& db = ctx_.servidor();
    for (long long n = 1, ultima = ultimaCarrera(db, fecha_, ctx_.session.ch); n <= ultima; ++n)
        guardarMontosCasa(db, fecha_, n, parametros_);
}

int Subasta::LlenarReporte(bool final) {
    const int tipo = final ? diseno_.reporteFinal
                           : (tablita_ && diseno_.reporteCarreraTP ? diseno_.reporteCarreraTP : diseno_.reporteCarrera);
    if (tipo == 0) return 0;
    guardarMontosDelDia();
    llenarReportesSubasta(ctx_.servidor(), ctx_.local(), fecha_, ctx_.session.ch, parametros_, diseno_);
    return tipo;
}

Impreso Subasta::impreso(ImpresoSubasta cual) {
    Db& db = ctx_.servidor();
    const QString& ch = ctx_.session.ch;
    Impreso out;
    out.lineas = encabezadoSubasta(tituloImpreso(diseno_, cual), ch, ctx_.clock.now());
    const auto dia = [&](const LadoSubasta& l) {
        guardarMontosDelDia();
        return lineasFinal(liquidarDia(db, fecha_, ch, l, parametros_), diseno_);
    };
    switch (cual) {
    case ImpresoSubasta::Boleto:
    case ImpresoSubasta::ReporteRemate:
        guardarMontosCasa(db, fecha_, carrera_, parametros_);
        leerFilas();
        out.lineas << lineasCarrera(liquidarCarrera(filas_, lado(), parametros_.tablazo), diseno_);
        break;
    case ImpresoSubasta::FinalDia: out.lineas << dia(lado()); break;
    case ImpresoSubasta::FinalTG: out.lineas << dia(diseno_.grande); break;
    case ImpresoSubasta::FinalTP: out.lineas << dia(diseno_.pequeno); break;
    case ImpresoSubasta::GanadoresRemate: out.lineas << lineasGanadores(db, fecha_, ch, diseno_); break;
    case ImpresoSubasta::JugadoRemate: out.lineas << lineasJugado(jugadoPorComprador(db, fecha_, ch, diseno_)); break;
    }
    return out;
}

bool Subasta::Impresora(ImpresoSubasta cual) {
    if (!cargada() || esSocio()) return false;
    const Impreso pieza = impreso(cual);
    if (cual != ImpresoSubasta::Boleto && ctx_.cnLocal)
        llenarReportesSubasta(ctx_.servidor(), *ctx_.cnLocal, fecha_, ctx_.session.ch, parametros_, diseno_);
    leerFilas();
    return ImpresoraTaquilla(ctx_).imprimir(pieza);
}

}  // namespace hipico
