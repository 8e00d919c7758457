#include "sales/JuegoMacuare.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"

#include <QMap>
#include <cmath>
#include <algorithm>

namespace hipico {

namespace {

constexpr double kCentavo = 0.005;
// Horse numbers above this are typing mistakes.
constexpr long long kNumeroMaximo = 1000000;

const QString kDebeMonto = QStringLiteral("DEBE INGRESAR UN MONTO");
const QString kMontoMenor = QStringLiteral("EL MONTO DEBE SER MENOR ");
const QString kCaballosNoValidos = QStringLiteral("Tiene Caballos con numeros no validos");
const QString kVecesNoValidas = QStringLiteral("LAS VECES DEBEN ESTAR ENTRE 1 Y ");
const QString kSeparador = QStringLiteral("----------------------------------------");

const char* const kDia =
    "SELECT d.fecha, IF(d.id_hipodromo <> 0, d.id_hipodromo, k.id_hipodromo) AS id_hipodromo, d.carrera1, "
    "d.porcentaje_casa FROM macuare_dias d JOIN configuracion k WHERE d.fecha = ? LIMIT 1";
const char* const kAbierto =
    "SELECT k.venta_macuare, (SELECT max(c.venta_mc) FROM carreras c WHERE c.fecha = d.fecha and c.carrera = "
    "d.carrera1 and c.id_hipodromo = IF(d.id_hipodromo <> 0, d.id_hipodromo, k.id_hipodromo)) AS venta_mc "
    "FROM macuare_dias d JOIN configuracion k WHERE d.fecha = ? LIMIT 1";
const char* const kCompartirDia = "SELECT id FROM macuare_dias WHERE fecha = ? LOCK IN SHARE MODE";
const char* const kGrupo =
    "SELECT grupo, cab_max, macuare, veces_mc, apuesta_max_mc, cupo_mc, empresa, rif, impresion_datos, "
    "duracionboletos FROM grupos WHERE grupo = ? LIMIT 1";
// The combination's register row, locked: added with no amount when the day
// has none yet (it goes with the transaction if the sale is refused). One
// statement that locks the row whether it adds it or finds it, so booths
// selling the same combination queue on it and never deadlock.
const char* const kBloquearCombinacion =
    "INSERT INTO combinaciones_general (combinacion, fecha, estatus, monto) VALUES (?, ?, 0, 0) ON DUPLICATE KEY "
    "UPDATE estatus = estatus";
const char* const kQuitarCombinacion =
    "DELETE FROM combinaciones_general WHERE combinacion = ? and fecha = ? and monto = 0 limit 1";
const char* const kVendidas = "SELECT count(combinacion)as cant_comb FROM macuares Where combinacion=? and fecha=?";
const char* const kCorredores =
    "SELECT carrera, nu_caballo, retirado FROM carreras WHERE fecha = ? and id_hipodromo = ? and carrera between ? "
    "and ?";
const char* const kVendidoCombinacion =
    "SELECT sum(monto * veces) as venta_ch FROM macuares where combinacion=? and fecha = ? and grupo=?";
const char* const kCodigo = "update macuares set boleto=?,nombre=? Where taquilla=? and numero = ? limit 1";
const char* const kRegistrada =
    "update combinaciones_general set estatus=?, monto = monto + ? where combinacion=? and fecha = ?";
const char* const kDesregistrar =
    "update combinaciones_general set monto = monto - ? where combinacion=? and fecha = ?";
// The first leg's horse's race-card row counts the day's Macuare tickets on
// it: the sale and a void write it, and so does the Macuare close, so on a
// cluster a sale or void and the close never both commit unseen by the other.
const char* const kPrimeraPierna =
    "SELECT venta_mc FROM carreras WHERE fecha = ? AND id_hipodromo = ? AND carrera = ? AND nu_caballo = ? FOR UPDATE";
const char* const kContarEnCarrera =
    "UPDATE carreras SET boletos_mc = boletos_mc + ? WHERE fecha = ? AND id_hipodromo = ? AND carrera = ? AND "
    "nu_caballo = ?";
const char* const kTotales =
    "SELECT count(*) AS cant_venta, COALESCE(sum(monto * veces), 0) AS venta, "
    "COALESCE(sum(IF(estatus=2 or estatus=3, cobrado, 0)), 0) AS monto_cobrado, "
    "COALESCE(sum(estatus=2 or estatus=3), 0) AS cant_mc, "
    "COALESCE(sum(IF(estatus=1 or estatus=4, cobrado, 0)), 0) AS monto_porcobrar, "
    "COALESCE(sum(estatus=1 or estatus=4), 0) AS cant_mpc, "
    "(SELECT count(numero) FROM bitacora_mc where estatus=5 and fecha = ? and taquilla = ?) AS cant_anulados "
    "FROM macuares WHERE fecha = ? and taquilla = ?";
const char* const kLista =
    "SELECT numero,boleto,v1,v2,v3,v4,v5,v6,v7,monto,veces,grupo FROM macuares Where  taquilla=? and fecha  = ? "
    "order by numero desc   ";

Rechazo verifique(const QString& texto) {
    Rechazo r;
    r.titulo = texto::TituloVerifiqueIntente;
    r.texto = texto;
    return r;
}

// The first leg's horse's race-card row, locked: whether it sells Macuare
// (a horse that is not on the card is left to the runners' check).
bool primeraAbierta(Db& db, const DiaMacuare& d, long long caballo) {
    const Recordset rs = db.query(kPrimeraPierna, {d.fecha, d.hipodromo, d.carrera(0), caballo});
    return rs.empty() || rs.first().integerOr("venta_mc") == 1;
}

Piernas piernasDe(const Row& r) {
    Piernas v{};
    for (int i = 0; i < kPiernas; ++i) v[i] = r.integer(QStringLiteral("v%1").arg(i + 1));
    return v;
}

}  // namespace

const Juego& juegoMacuare() {
    static const Juego juego{
        "macuares",
        "ventas_mc",
        "ventas_mc_general",
        "boleto",
        "taquilla",
        QStringLiteral("COBRO DE BOLETOS"),
        {{Estatus::Ganador, Estatus::Pagado, QStringLiteral("BOLETO GANADOR"), true}},
        {},
        reciboMacuare,
        [](const Row& b, const QString& motivo, const QString& usuario, Estatus estatus) {
            return anotacionMacuare(b, motivo, usuario, numeroDe(estatus));
        },
        // A ticket is voided only while the Macuare sells (checked under the
        // day's lock and its first leg's horse's row, which the void writes).
        [](Db& db, const Row& b) {
            db.query(kCompartirDia, {b.text("fecha")});
            return !primeraAbierta(db, diaMacuare(db, b.text("fecha")), b.integer("v1")) ||
                   !macuareAbierto(db, b.text("fecha"));
        },
        texto::CarreraCerradaSinCambios,
        {},
        // The combination's amount sold goes down by the ticket's.
        [](Db& db, const Row& b) {
            db.exec(kDesregistrar, {b.number("monto") * b.number("veces"), b.text("combinacion"), b.text("fecha")});
            const DiaMacuare d = diaMacuare(db, b.text("fecha"));
            db.exec(kContarEnCarrera, {-1, d.fecha, d.hipodromo, d.carrera(0), b.integer("v1")});
        },
        // devolucion: what it was sold for.
        [](Db&, const Row& b) { return b.number("monto") * b.number("veces"); },
        {QStringLiteral("veces"), QStringLiteral("monto")},  // compra
    };
    return juego;
}

QString textoCombinacion(const Piernas& v) {
    QStringList partes;
    for (long long n : v) partes << QString::number(n);
    return partes.join(QLatin1Char('-'));
}

DiaMacuare diaMacuare(Db& db, const QString& fecha) {
    DiaMacuare d;
    d.fecha = fecha;
    const Recordset rs = db.query(kDia, {fecha});
    if (rs.empty()) return d;
    const Row& r = rs.first();
    d.existe = true;
    d.hipodromo = r.integer("id_hipodromo");
    d.carrera1 = r.integer("carrera1");
    d.porcentajeCasa = r.number("porcentaje_casa");
    return d;
}

bool macuareAbierto(Db& db, const QString& fecha) {
    const Recordset rs = db.query(kAbierto, {fecha});
    return !rs.empty() && rs.first().integer("venta_macuare") == 1 && rs.first().integerOr("venta_mc") == 1;
}

Row parametrosMacuare(Context& ctx) {
    const Recordset rs = ctx.servidor().query(kGrupo, {ctx.session.grupo});
    return rs.empty() ? Row() : rs.first();
}

// ---------------------------------------------------------------- printing

Impreso ticketMacuare(Context& ctx, const BoletoMacuareVendido& b, int diasValidez, bool grafico) {
    QStringList l;
    l << (grafico ? QStringLiteral("              VENTA MACUARE") : QStringLiteral("VENTA MACUARE"));
    l << kSeparador;
    l << QStringLiteral("CENTRO HIPICO ") + ctx.session.ch;
    l << QStringLiteral("FECHA: ") + fechaVista(b.fecha);
    l << QStringLiteral("HORA: ") + b.hora;
    l << QStringLiteral("BOLETO: ") + b.codigo;
    l << QStringLiteral("NOMBRE: ") + b.nombre;
    l << QStringLiteral("VECES: ") + QString::number(b.veces);
    QStringList piernas;
    for (int i = 0; i < kPiernas; ++i)
        piernas << QStringLiteral("C%1(").arg(i + 1) + QString::number(b.v[i]) + QStringLiteral(")");
    l << piernas.join(QLatin1Char(' '));
    l << (grafico ? QStringLiteral("MONTO JUGADO: ") : QStringLiteral("Monto Apostado: ")) +
             formatoMonto(b.monto, ctx.session.enDolares());
    l << kSeparador;
    l << QStringLiteral("BOLETO CADUCA A LOS ") + QString::number(diasValidez) + QStringLiteral(" DIAS");
    l << kSeparador;
    return {l, b.codigo, noImpreso(b.codigo)};
}

Impreso reciboMacuare(const DatosCobro& c, bool grafico) {
    QStringList l;
    l << (grafico ? QStringLiteral("           COBRO DE JUGADA MACUARE") : QStringLiteral("MACUARE"));
    l << QStringLiteral("CENTRO HIPICO ") + c.centro;
    l << QStringLiteral("FECHA: ") + fechaVista(c.fecha);
    l << QStringLiteral("HORA: ") + c.hora;
    l << QStringLiteral("BOLETO: ") + c.codigo;
    l << QStringLiteral("MONTO COBRADO : ") + formatoMonto(c.monto, c.enDolares);
    l << QStringLiteral("            GRACIAS POR JUGAR!            ");
    l << QString(40, QLatin1Char('*'));
    return {l, QString(), QString()};
}

// ---------------------------------------------------------------- the sale

JugadaMacuare::JugadaMacuare(Context& ctx, PedidoMacuare pedido, Row grupo)
    : ctx_(ctx), pedido_(std::move(pedido)), grupo_(std::move(grupo)), fecha_(fechaTrabajo(ctx)),
      hora_(horaTexto(ctx.clock.now().time())) {
    // The picks as typed: a leg that is not a number stays 0 (refused by the checks).
    for (int i = 0; i < kPiernas; ++i)
        v_[i] = i < pedido_.piernas.size() ? leerEntero(pedido_.piernas[i].trimmed(), kNumeroMaximo).value_or(0) : 0;
    combinacion_ = textoCombinacion(v_);
}

void JugadaMacuare::preparar(Db& db) {
    db_ = &db;
    dia_ = diaMacuare(db, fecha_);
}

void JugadaMacuare::bloquear(Db& db) {
    registrada_ = false;
    piernaMala_ = -1;
    // The day's row, shared: then the combination's register row, then the
    // first leg's horse's race-card row. Always in that order.
    db.query(kCompartirDia, {fecha_});
    db.exec(kBloquearCombinacion, {combinacion_, fecha_});
    registrada_ = Row::toInteger(db.scalar(kVendidas, {combinacion_, fecha_})) > 0;
    // Its open flag is read under the row's lock (the latest, not the
    // transaction's first view): the close writes the row, so on a cluster
    // a close certified first sends this sale round again and it sees it.
    primeraAbierta_ = primeraAbierta(db, dia_, v_[0]);
}

std::vector<Jugada::Chequeo> JugadaMacuare::chequeos() {
    using Paso = std::optional<Rechazo> (JugadaMacuare::*)();
    std::vector<Chequeo> c;
    for (Paso paso : {&JugadaMacuare::abierto, &JugadaMacuare::montoValido, &JugadaMacuare::vecesValidas,
                      &JugadaMacuare::maximo, &JugadaMacuare::caballosValidos, &JugadaMacuare::cupo})
        c.push_back([this, paso] {
            std::optional<Rechazo> r = (this->*paso)();
            // A refused sale leaves no register row of a combination nobody holds.
            if (r && !registrada_) db_->exec(kQuitarCombinacion, {combinacion_, fecha_});
            return r;
        });
    return c;
}

std::optional<Rechazo> JugadaMacuare::abierto() {
    if (!dia_.existe || grupo_.integerOr("macuare") != 1 || !primeraAbierta_ || !macuareAbierto(*db_, fecha_))
        return verifique(texto::CarreraCerradaSinCambios);
    return std::nullopt;
}

std::optional<Rechazo> JugadaMacuare::montoValido() {
    double m = 0;
    if (!leerMonto(pedido_.monto.trimmed(), m) || !std::isfinite(m) || !(m > 0)) return verifique(kDebeMonto);
    // To the cent; a huge amount is left to the maximum's refusal.
    monto_ = m > kMontoMaximo ? m : std::round(m * 100) / 100;
    if (monto_ <= 0) return verifique(kDebeMonto);
    return std::nullopt;
}

// Veces: a whole number from 1 to the group's maximum (veces_mc; 0 = only 1).
std::optional<Rechazo> JugadaMacuare::vecesValidas() {
    const long long tope = std::max<long long>(1, grupo_.integerOr("veces_mc"));
    const QString t = pedido_.veces.trimmed();
    const std::optional<long long> n = t.isEmpty() ? std::optional<long long>(1) : leerEntero(t, kNumeroMaximo);
    if (!n || *n < 1 || *n > tope) return verifique(kVecesNoValidas + QString::number(tope));
    veces_ = *n;
    return std::nullopt;
}

// The ticket's cost (amount x veces) against the group's maximum per ticket (0: the program's largest amount).
std::optional<Rechazo> JugadaMacuare::maximo() {
    const double maximoGrupo = grupo_.numberOr("apuesta_max_mc");
    const double tope = maximoGrupo > 0 ? std::min(maximoGrupo, kMontoMaximo) : kMontoMaximo;
    if (monto_ * double(veces_) <= tope + kCentavo / 10) return std::nullopt;
    return verifique(kMontoMenor + formatoMonto(tope, ctx_.session.enDolares()));
}

// Every pick a number from 1 to cab_max, a runner of its leg's race, not scratched.
std::optional<Rechazo> JugadaMacuare::caballosValidos() {
    const long long tope = grupo_.integerOr("cab_max");
    QMap<QPair<long long, long long>, bool> corren;  // (race, horse) -> running
    for (const Row& r : db_->query(kCorredores, {fecha_, dia_.hipodromo, dia_.carrera(0), dia_.carrera(kPiernas - 1)}))
        corren[{r.integer("carrera"), r.integer("nu_caballo")}] = r.integer("retirado") == 0;
    for (int i = 0; i < kPiernas; ++i) {
        if (v_[i] < 1 || v_[i] > tope || !corren.value({dia_.carrera(i), v_[i]}, false)) {
            piernaMala_ = i;
            return verifique(kCaballosNoValidos);
        }
    }
    return std::nullopt;
}

// The group's quota per combination (cupo_mc; 0 = none), over every booth of the group.
std::optional<Rechazo> JugadaMacuare::cupo() {
    const double tope = grupo_.numberOr("cupo_mc");
    if (tope <= 0) return std::nullopt;
    const double vendido = Row::toNumber(db_->scalar(kVendidoCombinacion, {combinacion_, fecha_, ctx_.session.grupo}));
    const double costo = monto_ * double(veces_);
    if (vendido + costo <= tope + kCentavo / 10) return std::nullopt;
    return verifique(texto::MontoMayorPermitido + formatoMonto(std::max(0.0, tope - vendido), ctx_.session.enDolares()));
}

Insercion JugadaMacuare::fila(const QString& ficha) const {
    const Session& s = ctx_.session;
    BoletoMacuare b;
    b.fecha = fecha_;
    b.hora = hora_;
    b.monto = monto_;
    b.veces = veces_;
    std::copy(v_.begin(), v_.end(), b.v);
    b.nombre = pedido_.nombre.trimmed();
    b.grupo = s.grupo;
    b.subgrupo = s.subgrupo;
    b.taquilla = s.ch;
    b.combinacion = combinacion_;
    b.ficha = ficha;
    return b.insercion();
}

void JugadaMacuare::completar(Db& db, long long numero, const QString& codigo) {
    db.exec(kCodigo, {codigo, pedido_.nombre.trimmed(), ctx_.session.ch, numero});
    // The combination register: the first sale of the day added it, later ones mark it; each adds its amount.
    db.exec(kRegistrada, {registrada_ ? 1 : 0, monto_ * double(veces_), combinacion_, fecha_});
    db.exec(kContarEnCarrera, {1, fecha_, dia_.hipodromo, dia_.carrera(0), v_[0]});
}

BoletoMacuareVendido JugadaMacuare::boleto(long long numero, const QString& codigo) const {
    return {numero, codigo, v_, monto_, veces_, pedido_.nombre.trimmed(), fecha_, hora_, ctx_.session.grupo};
}

Impreso JugadaMacuare::ticket(long long numero, const QString& codigo, bool grafico) const {
    return ticketMacuare(ctx_, boleto(numero, codigo), static_cast<int>(grupo_.integerOr("duracionboletos")), grafico);
}

// ---------------------------------------------------------------- figures

TotalesDia totalesMacuare(Context& ctx) {
    const QString fecha = fechaTrabajo(ctx);
    const QString& ch = ctx.session.ch;
    const Row r = ctx.servidor().query(kTotales, {fecha, ch, fecha, ch}).first();
    TotalesDia t;
    t.venta = r.number("venta");
    t.unidadesVendidas = t.venta;
    t.cantVenta = r.integer("cant_venta");
    t.cobrado = r.number("monto_cobrado");
    t.cantCobrado = r.integer("cant_mc");
    t.porCobrar = r.number("monto_porcobrar");
    t.cantPorCobrar = r.integer("cant_mpc");
    t.anulados = r.integer("cant_anulados");
    return t;
}

Impreso resumenMacuare(Context& ctx, bool grafico) {
    DatosResumen d;
    d.centro = ctx.session.ch;
    d.taquilla = ctx.session.usuario;
    d.fecha = fechaTrabajo(ctx);
    d.hora = horaTexto(ctx.clock.now().time());
    d.carreras = QStringLiteral("TODAS");
    d.totales = totalesMacuare(ctx);
    d.enDolares = ctx.session.enDolares();
    d.encabezado = QStringLiteral("-- VENTA MACUARE --");
    d.encabezadoGrafico = QStringLiteral("            --- MACUARE ---");
    return resumenVentas(d, grafico);
}

QVector<BoletoMacuareVendido> listaMacuares(Context& ctx) {
    QVector<BoletoMacuareVendido> lista;
    for (const Row& r : ctx.servidor().query(kLista, {ctx.session.ch, fechaTrabajo(ctx)}))
        lista.push_back({r.integer("numero"), r.text("boleto"), piernasDe(r), r.number("monto"), r.integer("veces"),
                         QString(), QString(), QString(), r.text("grupo")});
    return lista;
}

const QStringList& encabezadosListaMacuare() {
    static const QStringList e{" BOLETO ", " V1 ", " V2 ", " V3 ", " V4 ",   " V5 ",
                               " V6 ",     " V7 ", " MONTO ", " VECES ", " GRUPO "};
    return e;
}

}  // namespace hipico
