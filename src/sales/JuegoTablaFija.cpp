#include "sales/JuegoTablaFija.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/JuegoGanadores.h"

#include <algorithm>
#include <cmath>

namespace hipico {

namespace {

// Race numbers and tables above these are typing mistakes.
constexpr long long kNumeroMaximo = 1000000;
constexpr long long kTablasMaximas = 100000;

const QString kTablasNoValidas = QStringLiteral("EL NUMERO DE TABLAS NO ES VALIDO");
const QString kTablasMayor = QStringLiteral("EL Nº DE TABLAS ES MAYOR AL PERMITIDO, PERMITIDO: ");

// The group's parameters and the horse's row on the group's track.
const char* const kGrupoYCaballo =
    "SELECT g.grupo, g.cab_max, IF(g.carrera <> 0, g.carrera, k.carrera) AS carrera, "
    "IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) AS id_hipodromo, g.venta_tf, g.apuesta_max_tf, "
    "g.cupo_tf_opcion, g.cupoviptf, g.mensajetf, g.empresa, g.rif, g.impresion_datos, g.duracionboletos, "
    "c.id_carrera FROM grupos g JOIN configuracion k LEFT JOIN carreras c ON c.carrera = ? and c.fecha = ? and "
    "c.nu_caballo = ? and c.id_hipodromo = IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) "
    "WHERE g.grupo = ? ORDER BY c.id_carrera LIMIT 1";
const char* const kMismoCaballo =
    "SELECT id_carrera FROM carreras where carrera = ? and fecha = ? and nu_caballo = ? order by id_carrera";
const char* const kBloquearCaballo =
    "SELECT id_carrera, fecha, carrera, id_hipodromo, nu_caballo, caballo, retirado_tf, estado_tf, bloqueotf, "
    "valor_tf, venta_tf, apuesta_max_tf FROM carreras where id_carrera = ? FOR UPDATE";
// What the horse sold (by the group, or by the whole centre) and the centre's quota row.
const char* const kCupoGrupo =
    "SELECT (SELECT sum(tablas) FROM tablafija where caballo=? and carrera =? and grupo = ? and fecha = ?) as "
    "venta_ch, v.* FROM (SELECT 1 AS uno) x LEFT JOIN venta_cupo_tf v ON v.ch = ?";
const char* const kCupoCentro =
    "SELECT (SELECT sum(tablas) FROM tablafija where caballo=? and carrera =? and ch = ? and fecha = ?) as "
    "venta_ch, v.* FROM (SELECT 1 AS uno) x LEFT JOIN venta_cupo_tf v ON v.ch = ?";
// The code.
const Sello kCodigo("tablafija", "m.nu_boleto=?", "m.ch=? and m.numero = ?", "boletos_tf");
// Rows of the race on the group's track still taking fixed-table changes.
const char* const kCarreraAbierta =
    "SELECT count(*) FROM carreras c JOIN grupos g ON g.grupo = ? JOIN configuracion k WHERE c.fecha = ? and "
    "c.carrera = ? and c.id_hipodromo = IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) and "
    "c.venta_tf = 1 and c.bloqueotf = 0 and c.estado_tf = 0";

Rechazo rechazo(const QString& texto) {
    Rechazo r;
    r.titulo = texto::TituloVerifiqueIntente;
    r.texto = texto;
    return r;
}

QString monto(double valor, bool enDolares) { return formatoMonto(valor, enDolares); }

}  // namespace

const Juego& juegoTablaFija() {
    static const Juego juego{
        "tablafija",
        "ventas_tf",
        "ventas_tf_general",
        "nu_boleto",
        "ch",
        QStringLiteral("COBRO DE TABLAS"),
        {{Estatus::Ganador, Estatus::Pagado, QStringLiteral("CABALLO GANADOR"), true},
         {Estatus::Devolucion, Estatus::DevolucionPagada, QStringLiteral("CABALLO RETIRADO"), false}},
        {},  // no sale keys: nothing to re-check
        reciboTablaFija,
        [](const Row& b, const QString& motivo, const QString& usuario, Estatus estatus) {
            return AnotacionTablaFija{b.integer("numero"), b.integer("carrera"), b.integer("caballo"),
                                      b.number("monto"),   b.number("tablas"),   b.text("ch"),
                                      b.text("grupo"),     b.text("hora"),       b.text("fecha"),
                                      numeroDe(estatus),   b.text("nu_boleto"),  b.number("cobrado"),
                                      b.text("fecha_cobro"), motivo,             usuario}
                .insercion();
        },
        [](Db& db, const Row& b) {
            return tablaFijaCerrada(db, b.text("grupo"), b.text("fecha"), b.integer("carrera"));
        },
        texto::CarreraCerradaSinCambios,
        [](Db& db, const Row& b) {
            return tablaFijaCerrada(db, b.text("grupo"), b.text("fecha"), b.integer("carrera"));
        },
        {},                                                      // alAnular: nothing else
        [](Db&, const Row& b) { return b.number("monto"); },  // devolucion: what it was sold for
        {QStringLiteral("tablas"), QStringLiteral("monto")},     // compra
    };
    return juego;
}

bool tablaFijaAbierta(const Row& c) {
    return c.integerOr("venta_tf") == 1 && c.integerOr("bloqueotf") == 0 && c.integerOr("estado_tf") == 0;
}

bool tablaFijaCerrada(Db& db, const QString& grupo, const QString& fecha, long long carrera) {
    return Row::toInteger(db.scalar(kCarreraAbierta, {grupo, fecha, carrera})) == 0;
}

Row parametrosTablaFija(Context& ctx, const QString& carrera, const QString& caballo) {
    const long long c = leerEntero(carrera, kNumeroMaximo).value_or(-1);
    const long long h = leerEntero(caballo, kNumeroMaximo).value_or(-1);
    const Recordset rs = ctx.servidor().query(kGrupoYCaballo, {c, fechaTrabajo(ctx), h, ctx.session.grupo});
    return rs.empty() ? Row() : rs.first();
}

// ---------------------------------------------------------------- the sale

JugadaTablaFija::JugadaTablaFija(Context& ctx, PedidoTablaFija pedido, Row grupo)
    : ctx_(ctx), pedido_(std::move(pedido)), grupo_(std::move(grupo)), fecha_(fechaTrabajo(ctx)),
      hora_(horaTexto(ctx.clock.now().time())) {
    carrera_ = leerEntero(pedido_.carrera, kNumeroMaximo);
    caballo_ = leerEntero(pedido_.caballo, kNumeroMaximo);
    tablas_ = leerEntero(pedido_.tablas, kTablasMaximas);
}

void JugadaTablaFija::preparar(Db& db) {
    db_ = &db;
    aBloquear_.clear();
    if (!carrera_ || !caballo_) return;
    // The same race and horse on every track: a centre's quota covers them all.
    for (const Row& r : db.query(kMismoCaballo, {*carrera_, fecha_, *caballo_})) aBloquear_ << r.integer("id_carrera");
}

void JugadaTablaFija::bloquear(Db& db) {
    existe_ = false;
    caballoFila_ = Row();
    const long long id = grupo_.integerOr("id_carrera");
    for (long long bloqueo : aBloquear_) {
        const Recordset r = db.query(kBloquearCaballo, {bloqueo});
        if (bloqueo == id && !r.empty() && r.first().integer("carrera") == *carrera_ &&
            r.first().integer("nu_caballo") == *caballo_ &&
            r.first().integer("id_hipodromo") == grupo_.integerOr("id_hipodromo") && r.first().text("fecha") == fecha_) {
            caballoFila_ = r.first();
            existe_ = true;
        }
    }
}

std::vector<Jugada::Chequeo> JugadaTablaFija::chequeos() {
    return {
        [this] { return tablasValidas(); },   [this] { return caballoValido(); },
        [this] { return carreraPermitida(); }, [this] { return caballoExiste(); },
        [this] { return caballoRetirado(); }, [this] { return carreraAbierta(); },
        [this] { return cupoDelCaballo(); },  [this] { return tablasPorBoleto(); },
        [this] { return montoPorBoleto(); },
    };
}

std::optional<Rechazo> JugadaTablaFija::tablasValidas() {
    if (!tablas_ || *tablas_ <= 0) return rechazo(kTablasNoValidas);
    return std::nullopt;
}

// A horse the fixed table has no quota column for (15, 16) is not sold.
std::optional<Rechazo> JugadaTablaFija::caballoValido() {
    if (!caballo_ || *caballo_ == 0 || *caballo_ > grupo_.integerOr("cab_max") || *caballo_ > kCaballosTablaFija)
        return rechazo(texto::CaballoNoValido);
    return std::nullopt;
}

std::optional<Rechazo> JugadaTablaFija::carreraPermitida() {
    if (!carrera_ || *carrera_ != grupo_.integerOr("carrera")) return rechazo(texto::CarreraNoPermitida);
    return std::nullopt;
}

std::optional<Rechazo> JugadaTablaFija::caballoExiste() {
    if (!existe_) return rechazo(texto::CaballoNoExiste);
    return std::nullopt;
}

std::optional<Rechazo> JugadaTablaFija::caballoRetirado() {
    if (caballoFila_.integer("retirado_tf") != 0) return rechazo(texto::CaballoRetirado);
    return std::nullopt;
}

// The group's fixed-table sale, the race's pool, block and result; a horse
// without a table price is not on sale either.
std::optional<Rechazo> JugadaTablaFija::carreraAbierta() {
    const bool abierta = grupo_.integerOr("venta_tf") == 1 && tablaFijaAbierta(caballoFila_) &&
                         caballoFila_.number("valor_tf") > 0;
    if (abierta) return std::nullopt;
    return rechazo(confirmada_ ? texto::CarreraSeEncuentraCerrada : texto::CarreraCerradaSinCambios);
}

// The quota of the centre's row for the horse, against what the group (or,
// with cupo_tf_opcion = 1, the whole centre) sold. No row: no quota set.
std::optional<Rechazo> JugadaTablaFija::cupoDelCaballo() {
    const Session& s = ctx_.session;
    const Row q = grupo_.integerOr("cupo_tf_opcion") == 1
                      ? db_->query(kCupoCentro, {*caballo_, *carrera_, s.ch, fecha_, s.ch}).first()
                      : db_->query(kCupoGrupo, {*caballo_, *carrera_, s.grupo, fecha_, s.ch}).first();
    const QString columna = QStringLiteral("cab") + QString::number(*caballo_);
    if (q.isNull(columna)) return std::nullopt;
    if (q.number("venta_ch") + double(*tablas_) > q.number(columna) + 1e-9) return rechazo(texto::CupoLleno);
    return std::nullopt;
}

// The group's tables per ticket (cupoviptf, 0 = no limit).
std::optional<Rechazo> JugadaTablaFija::tablasPorBoleto() {
    const long long maximo = grupo_.integerOr("cupoviptf");
    if (maximo > 0 && *tablas_ > maximo) return rechazo(kTablasMayor + QString::number(maximo));
    return std::nullopt;
}

// The money of one ticket: the race's apuesta_max_tf, else the group's (0 = no limit).
std::optional<Rechazo> JugadaTablaFija::montoPorBoleto() {
    const double deCarrera = caballoFila_.number("apuesta_max_tf");
    const double maximo = deCarrera > 0 ? deCarrera : grupo_.numberOr("apuesta_max_tf");
    const double monto = double(*tablas_) * caballoFila_.number("valor_tf");
    if (maximo > 0 && monto > maximo + 1e-9)
        return rechazo(texto::MontoMayorPermitido + hipico::monto(maximo, ctx_.session.enDolares()));
    return std::nullopt;
}

Insercion JugadaTablaFija::fila(const QString& ficha) const {
    BoletoTablaFija b;
    b.carrera = *carrera_;
    b.caballo = *caballo_;
    b.tablas = double(*tablas_);
    b.monto = double(*tablas_) * caballoFila_.number("valor_tf");
    b.ch = ctx_.session.ch;
    b.grupo = ctx_.session.grupo;
    b.hora = hora_;
    b.fecha = fecha_;
    b.ficha = ficha;
    return b.insercion();
}

void JugadaTablaFija::completar(Db& db, long long numero, const QString& codigo) {
    kCodigo.escribir(db, caballoFila_.integer("id_carrera"), {codigo, ctx_.session.ch, numero});
}

QString JugadaTablaFija::resumen(bool enDolares) const {
    const double precio = double(tablas_.value_or(0)) * caballoFila_.numberOr("valor_tf");
    return QStringLiteral("    ") + QString::number(tablas_.value_or(0)) + QStringLiteral("  TABLAS  AL CAB: ") +
           QString::number(caballo_.value_or(0)) + QStringLiteral("    POR: ") + monto(precio, enDolares) +
           QStringLiteral("  BSF");
}

BoletoTablaFijaVendido JugadaTablaFija::boleto(long long numero, const QString& codigo) const {
    return {numero,
            codigo,
            *carrera_,
            *caballo_,
            caballoFila_.text("caballo"),
            *tablas_,
            double(*tablas_) * caballoFila_.number("valor_tf"),
            fecha_,
            hora_};
}

Impreso JugadaTablaFija::ticket(long long numero, const QString& codigo, bool grafico) const {
    return ticketTablaFija(ctx_, grupo_, boleto(numero, codigo), grafico);
}

// ---------------------------------------------------------------- printed pieces

Impreso ticketTablaFija(Context& ctx, const Row& grupo, const BoletoTablaFijaVendido& b, bool grafico) {
    const bool dolares = ctx.session.enDolares();
    const QString hipodromo = Row::toText(ctx.servidor().scalar(
        "SELECT hipodromo FROM hipodromos WHERE id_hipodromo = ?", {grupo.integerOr("id_hipodromo")}));
    QStringList l;
    l << (grafico ? QStringLiteral("                     VENTA TABLAS") : QStringLiteral("VENTA TABLAS"));
    if (grupo.integerOr("impresion_datos") == 1) {
        if (!grupo.textOr("empresa").isEmpty()) l << grupo.textOr("empresa");
        if (!grupo.textOr("rif").isEmpty()) l << QStringLiteral("RIF: ") + grupo.textOr("rif");
    }
    l << QStringLiteral("CENTRO HIPICO ") + ctx.session.ch;
    l << QStringLiteral("TAQUILLA ") + ctx.session.usuario;
    l << QStringLiteral("FECHA: ") + fechaVista(b.fecha);
    l << QStringLiteral("HORA: ") + b.hora;
    l << QStringLiteral("BOLETO: ") + b.codigo;
    l << QStringLiteral("HIPODROMO: ") + hipodromo;
    l << QStringLiteral("CARRERA: ") + QString::number(b.carrera);
    l << QStringLiteral("CABALLO: (") + QString::number(b.caballo) + QStringLiteral(") ") + b.nombreCaballo;
    l << QStringLiteral("TABLAS: ") + QString::number(b.tablas);
    l << QStringLiteral("COSTO DEL BOLETO: ") + monto(b.monto, dolares);
    if (!grupo.textOr("mensajetf").trimmed().isEmpty()) l << grupo.textOr("mensajetf").trimmed();
    l << QStringLiteral("BOLETO CADUCA A LOS ") + QString::number(grupo.integerOr("duracionboletos")) +
             QStringLiteral(" Dias");
    return {l, grafico ? b.codigo : QString(),
            QStringLiteral("EL BOLETO %1 QUEDÓ VENDIDO, PERO NO SE PUDO IMPRIMIR.").arg(b.codigo)};
}

Impreso reciboTablaFija(const DatosCobro& c, bool grafico) {
    const QString separador = QStringLiteral("---------------------------------------");
    QStringList l;
    l << (grafico ? QStringLiteral("                        COBRO DE JUGADA TF") : QStringLiteral("COBRO TABLAS"));
    l << separador;
    l << QStringLiteral("CENTRO HIPICO ") + c.centro;
    l << QStringLiteral("FECHA: ") + fechaVista(c.fecha);
    l << QStringLiteral("HORA: ") + c.hora;
    l << QStringLiteral("BOLETO: ") + c.codigo;
    l << QStringLiteral("TAQUILLA ") + c.taquilla;
    l << separador;
    l << QStringLiteral("MONTO COBRADO : ") + monto(c.monto, c.enDolares);
    l << separador;
    return {l, QString(),
            QStringLiteral("EL BOLETO %1 QUEDÓ PAGADO, PERO NO SE PUDO IMPRIMIR EL RECIBO.").arg(c.codigo)};
}

// ---------------------------------------------------------------- figures

TotalesDia totalesTablaFija(Context& ctx, long long desde, long long hasta) {
    Db& db = ctx.servidor();
    const std::string carreras = desde > 0 ? " and carrera between ? and ?" : "";
    Params p{fechaTrabajo(ctx), ctx.session.ch};
    if (desde > 0) p.insert(p.end(), {desde, hasta});
    // One round trip: sold, paid (2, 3) and due (1, 4) of the booth's centre.
    const Row r = db.query("SELECT sum(monto) as venta, sum(tablas) as tablas, count(*) as cant_venta, "
                           "sum(IF(estatus=2 or estatus=3, cobrado, 0)) as monto_cobrado, "
                           "sum(IF(estatus=2 or estatus=3, 1, 0)) as cant_mc, "
                           "sum(IF(estatus=1 or estatus=4, cobrado, 0)) as monto_porcobrar, "
                           "sum(IF(estatus=1 or estatus=4, 1, 0)) as cant_mpc "
                           "FROM tablafija where fecha= ? and ch=?" + carreras,
                           p)
                        .first();
    TotalesDia t;
    t.unidadesVendidas = r.number("tablas");
    t.venta = r.number("venta");
    t.cantVenta = r.integer("cant_venta");
    t.cobrado = r.number("monto_cobrado");
    t.cantCobrado = r.integer("cant_mc");
    t.porCobrar = r.number("monto_porcobrar");
    t.cantPorCobrar = r.integer("cant_mpc");
    t.anulados = Row::toInteger(db.scalar(
        "SELECT count(numero)as cant_anulados FROM bitacora_tf where (estatus=5) and fecha= ? and taquilla=?" + carreras,
        p));
    return t;
}

Impreso resumenTablaFija(Context& ctx, long long desde, long long hasta, bool grafico) {
    if (desde > hasta) std::swap(desde, hasta);
    const bool todas = desde <= 0;
    const Session& s = ctx.session;
    DatosResumen r;
    r.centro = s.ch;
    r.taquilla = s.usuario;
    r.fecha = fechaTrabajo(ctx);
    r.hora = horaTexto(ctx.clock.now().time());
    r.carreras = todas ? QStringLiteral("TODAS") : QStringLiteral("DE LA %1 HASTA LA %2").arg(desde).arg(hasta);
    r.totales = totalesTablaFija(ctx, todas ? 0 : desde, todas ? 0 : hasta);
    r.enDolares = s.enDolares();
    Impreso impreso = resumenVentas(r, grafico);
    // The same slip under the game's own heading.
    if (grafico) {
        impreso.lineas[0] = QStringLiteral("                  TABLA FIJA ---");
    } else {
        impreso.lineas[0] = QStringLiteral("--- VENTA TABLA FIJA ---");
    }
    return impreso;
}

QVector<CaballoTablaFija> caballosTablaFija(Context& ctx, long long carrera, const QString& ch) {
    const QString fecha = fechaTrabajo(ctx);
    std::string consulta =
        "SELECT c.nu_caballo, c.caballo, c.valor_tf, c.retirado_tf, coalesce(sum(t.tablas), 0) AS tablas, "
        "coalesce(sum(t.monto), 0) AS venta FROM carreras c LEFT JOIN tablafija t ON t.fecha = c.fecha and "
        "t.carrera = c.carrera and t.caballo = c.nu_caballo";
    Params p;
    if (!ch.isEmpty()) {
        consulta += " and t.ch = ?";
        p.push_back(ch);
    }
    consulta += " WHERE c.fecha = ? and c.carrera = ? and c.id_hipodromo = ? GROUP BY c.id_carrera, c.nu_caballo, "
                "c.caballo, c.valor_tf, c.retirado_tf ORDER BY c.nu_caballo";
    p.insert(p.end(), {fecha, carrera, carreraYPista(ctx).pista});
    QVector<CaballoTablaFija> out;
    for (const Row& r : ctx.servidor().query(consulta, p))
        out.append({r.integer("nu_caballo"), r.text("caballo"), r.number("valor_tf"), r.integer("retirado_tf") != 0,
                    r.number("tablas"), r.number("venta")});
    return out;
}

}  // namespace hipico
