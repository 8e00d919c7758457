#include "sales/JuegoGanadores.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Diario.h"
#include "core/Formato.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "sales/CuentasClientes.h"
#include "sales/TicketKeys.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace hipico {

namespace {

constexpr double kCentavo = 0.005;
// Race and horse numbers above this are typing mistakes.
constexpr long long kNumeroMaximo = 1000000;

// The client movement of a winner play: a JUGADA operation in cash.
constexpr int kOperacionJugada = 2;
constexpr int kBancoEfectivo = 1;

const QString kCerrada = QStringLiteral("LA CARRERA ESTA CERRADA, NO SE PUEDE HACER NINGUNA VENTA");
const QString kMenorPermitido = QStringLiteral("EL MONTO ES MENOR AL PERMITIDO");
const QString kCuatroCaballos = QStringLiteral("NO SE VENDE CON 4 CABALLOS");
const QString kClienteNoExiste = QStringLiteral("EL CLIENTE NO EXISTE ");
const QString kCupoVip = QStringLiteral("EL MONTO ES MAYOR AL CUPO POR JUGADOR VIP");
const QString kCupoJugador = QStringLiteral("EL MONTO ES MAYOR AL CUPO POR JUGADOR");

// The statements of the sale, prepared once per connection.
// The track of the group's sale: its own, else the system's.
const std::string kPistaDelGrupo = "IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo)";
// The centre's quota for the horse number bound: its column of the centre's row of quotas.
std::string cupoDelCaballo() {
    std::string cupo = "(SELECT CASE ?";
    for (int n = 1; n <= 16; ++n) cupo += " WHEN " + std::to_string(n) + " THEN q.cab" + std::to_string(n);
    return cupo + " END FROM venta_cupo_ganadores q WHERE q.ch = ?)";
}
// The group's parameters and, for the horse, its race-card row's key, the
// race's runners on the group's track and the centre's quota for the horse:
// what changes only with the settings, the groups, the runners or the
// quotas, all of which move the change mark read along (a booth keeps the
// row between its sales and checks the mark under the horse's lock). A
// one-row read: the server's cache of the subquery's results (built anew at
// every run) is left off, which halves the statement's time.
const std::string kGrupoYCaballo =
    "SET STATEMENT optimizer_switch='subquery_cache=off' FOR "
    "SELECT g.grupo, g.cab_max, IF(g.carrera <> 0, g.carrera, k.carrera) AS carrera, " +
    kPistaDelGrupo + " AS id_hipodromo, g.valor_ganador, g.apuesta_max_win, "
    "g.cupo_winxjugador, g.cupovip, g.inicialboleto, g.clave_win, g.pedirclave, g.admin_cupo, g.opcioncupowin, "
    "g.empresa, g.rif, g.impresion_datos, g.venta_ganadores, g.min_bs, g.min_dol, g.duracionboletos, "
    "k.revision AS marca, "
    "(SELECT min(c.id_carrera) FROM carreras c WHERE c.carrera = ? and c.fecha = ? and c.nu_caballo = ? and "
    "c.id_hipodromo = " + kPistaDelGrupo + ") AS id_carrera, "
    "(SELECT count(r.carrera) FROM carreras r WHERE r.carrera = ? and r.fecha = ? and r.retirado = 0 and "
    "r.id_hipodromo = " + kPistaDelGrupo + ") AS cant_cabs, " +
    cupoDelCaballo() + " AS cupo FROM grupos g JOIN configuracion k ON k.id = 1 WHERE g.grupo = ? LIMIT 1";
const char* const kCarreraYPista =
    "SELECT IF(g.carrera <> 0, g.carrera, k.carrera) AS carrera, "
    "IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) AS id_hipodromo "
    "FROM grupos g JOIN configuracion k WHERE g.grupo = ? LIMIT 1";
const char* const kCarreraVendiendo =
    "SELECT count(*) FROM carreras c JOIN grupos g ON g.grupo = ? JOIN configuracion k WHERE c.fecha = ? and "
    "c.carrera = ? and c.id_hipodromo = IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) and c.venta = 1";
const char* const kMismoCaballoOtrasPistas =
    "SELECT id_carrera FROM carreras where carrera = ? and fecha = ? and nu_caballo = ? order by id_carrera";
const char* const kBloquearCaballo =
    "SELECT id_carrera, fecha, carrera, id_hipodromo, nu_caballo, caballo, retirado, venta FROM carreras where "
    "id_carrera = ? FOR UPDATE";
// The horse's row locked, and in the same round trip what the checks read
// under that lock: what the horse sold (by the group, or by the whole
// centre), from its running total (venta_caballo, kept with every ticket
// written or deleted) read by key, so the sale costs the same however many
// tickets the horse already has; and the change mark of the parameters the
// sale runs on (the runners and the quota among them). Both reads are tied
// to the locked row, so they run once the lock is held and see every sale
// that held it before (a read tied to nothing would run first and fix the
// transaction's snapshot before the lock, hiding those sales).
std::string caballoYCupo(const char* vendido, const char* deQuien) {
    return std::string("SELECT c.id_carrera, c.fecha, c.carrera, c.id_hipodromo, c.nu_caballo, c.caballo, c.retirado, "
                       "c.venta, (SELECT ") +
           vendido + " FROM venta_caballo v where v.fecha = c.fecha and v.carrera = c.carrera and v.caballo = "
                     "c.nu_caballo and v.ch = ?" + deQuien +
           ") as venta_ch, (SELECT k.revision FROM configuracion k WHERE k.id = 1 and c.id_carrera > 0) as marca "
           "FROM carreras c where c.id_carrera = ? FOR UPDATE";
}
// By the group's own sales, or by the whole centre's.
const std::string kCaballoYCupoGrupo = caballoYCupo("ganadores", " and v.grupo = ?");
const std::string kCaballoYCupoCentro = caballoYCupo("sum(ganadores)", "");
// A paid winner (2) stays paid: a ticket is paid exactly once.
const char* const kDevolverCarrera =
    "update ma_principal set estatus=4,cobrado=(ganadores*?) where grupo=? AND carrera=? and (estatus<>3 and "
    "estatus <>4) and estatus<>2 and fecha  = ?";
const char* const kCliente = "SELECT * FROM clientes where  usuario  = ? and ch=? FOR UPDATE";
// The code and keys (the password path writes none).
const Sello kLlaves("ma_principal", "m.nu_boleto=?,m.llave=?,m.llave2=?,m.llave5=?", "m.ch=? and m.numero = ?",
                    "boletos");
const Sello kSoloCodigo("ma_principal", "m.nu_boleto=?", "m.ch=? and m.numero = ?", "boletos");

// An amount typed with a decimal comma, at most two decimals, above zero and
// not above the largest amount the program takes.
bool leerMontoVenta(const QString& texto, double& monto) {
    const QString t = texto.trimmed();
    for (const QChar c : t)
        if (!(c.isDigit() && c.unicode() < 128) && c != QLatin1Char(',')) return false;
    const int coma = t.indexOf(QLatin1Char(','));
    if (coma >= 0 && t.size() - coma - 1 > 2) return false;
    double v = 0;
    if (!leerMonto(t, v) || v <= 0 || v > kMontoMaximo) return false;
    monto = v;
    return true;
}

Rechazo rechazo(const QString& titulo, const QString& texto, bool autorizable = false) {
    Rechazo r;
    r.titulo = titulo;
    r.texto = texto;
    r.autorizable = autorizable;
    return r;
}

Rechazo verifique(const QString& texto) { return rechazo(texto::TituloVerifiqueIntente, texto); }

}  // namespace

const Juego& juegoGanadores() {
    static const Juego juego{
        "ma_principal",
        "ventas_ganadores",
        "ventas_ganadores_general",
        "nu_boleto",
        "ch",
        QStringLiteral("COBRO DE BOLETOS"),
        {{Estatus::Ganador, Estatus::Pagado, QStringLiteral("CABALLO GANADOR"), true},
         {Estatus::Devolucion, Estatus::DevolucionPagada, QStringLiteral("CABALLO RETIRADO"), false}},
        [](const Row& b, const std::optional<Row>& copia) { return mensajeAlteracion(verificarBoleto(b, copia)); },
        reciboCobro,
        [](const Row& b, const QString& motivo, const QString& usuario, Estatus estatus) {
            return AnotacionBitacora{b.integer("numero"), b.integer("carrera"), b.integer("caballo"),
                                     b.number("ganadores"), b.text("ch"), b.text("grupo"), b.text("hora"),
                                     b.text("fecha"), b.text("nu_boleto"), b.number("cobrado"), motivo, usuario,
                                     numeroDe(estatus)}
                .insercion();
        },
        [](Db& db, const Row& b) { return carreraProcesada(db, b.text("fecha"), b.integer("carrera")); },
        texto::BoletoNoAnulableProcesada,
        // Closed: no row of the race on the track of the ticket's group still sells.
        [](Db& db, const Row& b) {
            return Row::toInteger(db.scalar(kCarreraVendiendo, {b.text("grupo"), b.text("fecha"), b.integer("carrera")})) == 0;
        },
        {},  // alAnular: a void undoes nothing else
        // devolucion: the units at the unit's price.
        [](Db& db, const Row& b) {
            return b.number("ganadores") * Row::toNumber(db.scalar("SELECT valor_ganador FROM configuracion"));
        },
        {QStringLiteral("ganadores")},  // compra: units at the unit price
    };
    return juego;
}

bool carreraProcesada(Db& db, const QString& fecha, long long carrera) {
    const Recordset rs =
        db.query("SELECT distinct win_ganadores FROM carreras where fecha= ? and carrera=  ?  ;", {fecha, carrera});
    for (const Row& r : rs)
        if (r.integer("win_ganadores") != 0) return true;
    return false;
}

double valorGanador(const Session& s) {
    const double grupo = s.parametro(QStringLiteral("valor_ganador"));
    return grupo > 0 ? grupo : s.ajuste(QStringLiteral("valor_ganador"));
}

Row parametrosGanadores(Context& ctx, const QString& carrera, const QString& caballo) {
    const long long c = leerEntero(carrera, kNumeroMaximo).value_or(-1);
    const long long h = leerEntero(caballo, kNumeroMaximo).value_or(-1);
    const QString fecha = fechaTrabajo(ctx);
    const Recordset rs =
        ctx.servidor().query(kGrupoYCaballo, {c, fecha, h, c, fecha, h, ctx.session.ch, ctx.session.grupo});
    return rs.empty() ? Row() : rs.first();
}

namespace {

QString claveGuardada(const Context& ctx, const QString& carrera, const QString& caballo) {
    const QChar sep(0x1f);
    return ctx.session.grupo + sep + fechaTrabajo(ctx) + sep + carrera.trimmed() + sep + caballo.trimmed();
}

// A booth keeps the rows of a day's races: far fewer than this.
constexpr int kFilasGuardadas = 512;

}  // namespace

std::optional<Row> ParametrosGuardados::buscar(const Context& ctx, const QString& carrera,
                                               const QString& caballo) const {
    const auto it = filas_.constFind(claveGuardada(ctx, carrera, caballo));
    if (it == filas_.constEnd()) return std::nullopt;
    return *it;
}

Row ParametrosGuardados::leer(Context& ctx, const QString& carrera, const QString& caballo) {
    Row fila = parametrosGanadores(ctx, carrera, caballo);
    // A new mark: the rows kept under the old one are out of date.
    const long long marca = fila.integerOr("marca");
    if (marca != marca_ || filas_.size() >= kFilasGuardadas) filas_.clear();
    marca_ = marca;
    if (fila.integerOr("id_carrera") > 0) filas_.insert(claveGuardada(ctx, carrera, caballo), fila);
    return fila;
}

CarreraYPista carreraYPista(Context& ctx) {
    const Recordset rs = ctx.servidor().query(kCarreraYPista, {ctx.session.grupo});
    if (rs.empty()) return {};
    return {rs.first().integer("carrera"), rs.first().integer("id_hipodromo")};
}

// ---------------------------------------------------------------- the sale

VentaGanador::VentaGanador(Context& ctx, PedidoGanador pedido, Row grupo, bool guardado)
    : ctx_(ctx), pedido_(std::move(pedido)), grupo_(std::move(grupo)), guardado_(guardado), fecha_(fechaTrabajo(ctx)),
      hora_(horaTexto(ctx.clock.now().time())) {
    const double valorGrupo = grupo_.numberOr("valor_ganador");
    valor_ = valorGrupo > 0 ? valorGrupo : ctx.session.ajuste("valor_ganador");
    carrera_ = leerEntero(pedido_.carrera, kNumeroMaximo);
    caballo_ = leerEntero(pedido_.caballo, kNumeroMaximo);
}

void VentaGanador::preparar(Db& db) {
    db_ = &db;
    // The horse's race-card row: its key came with the group's parameters; it
    // is locked by key (a locking read by race would lock every horse).
    const long long id = grupo_.integerOr("id_carrera");
    if (id > 0) aBloquear_ << id;
    if (!carrera_ || !caballo_) return;
    // A quota shared by the centre's groups covers the same race and horse on every track.
    if (grupo_.integerOr("admin_cupo") == 1 && grupo_.integerOr("opcioncupowin") == 1)
        for (const Row& r : db.query(kMismoCaballoOtrasPistas, {*carrera_, fecha_, *caballo_}))
            if (!aBloquear_.contains(r.integer("id_carrera"))) aBloquear_ << r.integer("id_carrera");
    std::sort(aBloquear_.begin(), aBloquear_.end());
}

void VentaGanador::bloquear(Db& db) {
    // A transaction retried after a deadlock starts again from nothing read.
    existe_ = false;
    caballoFila_ = Row();
    cliente_ = Recordset();
    cupo_.reset();
    // The horse rows, then the client's row: always in that order. The
    // horse's row on the group's track is read last, with what the checks
    // need: every lock is held before the transaction's first plain read
    // (which fixes what the later reads, the client's balance among them,
    // see). Alone, the horse's lock comes with that read; else that row is
    // locked with the others and read again.
    const long long id = grupo_.integerOr("id_carrera");
    const QString cliente = pedido_.cliente.trimmed();
    if (!cliente.isEmpty() || aBloquear_.size() != 1 || aBloquear_.first() != id) {
        for (long long bloqueo : aBloquear_) db.query(kBloquearCaballo, {bloqueo});
        if (!cliente.isEmpty()) cliente_ = db.query(kCliente, {cliente, ctx_.session.ch});
    }
    if (id > 0) {
        const Session& s = ctx_.session;
        const bool porCentro = grupo_.integerOr("opcioncupowin") == 1;
        const Recordset r = porCentro ? db.query(kCaballoYCupoCentro, {s.ch, id})
                                      : db.query(kCaballoYCupoGrupo, {s.ch, s.grupo, id});
        // The row must still be this race's horse on the group's track and day.
        const bool esElCaballo = !r.empty() && carrera_ && caballo_ && r.first().integer("carrera") == *carrera_ &&
                                 r.first().integer("nu_caballo") == *caballo_ &&
                                 r.first().integer("id_hipodromo") == grupo_.integerOr("id_hipodromo") &&
                                 r.first().text("fecha") == fecha_;
        // The parameters hold only while nothing they came from moved (the
        // runners and the quota were read with them, before the lock): else
        // the sale starts again on the parameters read afresh. Kept ones
        // must also still name this horse.
        const bool movidos = esElCaballo && r.first().integerOr("marca") != grupo_.integerOr("marca");
        if (movidos || (guardado_ && !esElCaballo)) throw ParametrosCambiados{};
        if (esElCaballo) {
            caballoFila_ = r.first();
            existe_ = true;
            Cupo c;
            c.corredores = grupo_.integerOr("cant_cabs");
            // Quotas are checked only when the centre enforces them.
            if (grupo_.integerOr("admin_cupo") == 1) {
                if (!grupo_.isNull("cupo")) c.cupo = grupo_.number("cupo");
                c.vendido = caballoFila_.number("venta_ch");
            }
            cupo_ = c;
        }
    }
}

std::vector<Jugada::Chequeo> VentaGanador::chequeos() {
    return {
        [this] { return carreraAbierta(); },   [this] { return montoValido(); },
        [this] { return montoMinimo(); },      [this] { return caballoValido(); },
        [this] { return carreraPermitida(); }, [this] { return caballoCorre(); },
        [this] { return cupoAbierto(); },      [this] { return cuatroCorredores(); },
        [this] { return cupoDelCaballo(); },   [this] { return maximoPorBoleto(); },
        [this] { return clienteExiste(); },    [this] { return saldoDelCliente(); },
        [this] { return limiteDelCliente(); },
    };
}

// A closed race (for booth levels), or a group whose winner sale is off.
std::optional<Rechazo> VentaGanador::carreraAbierta() {
    const bool cerrada = (existe_ && caballoFila_.integer("venta") == 0) ||
                         (grupo_.has("venta_ganadores") && grupo_.integer("venta_ganadores") == 0);
    if (esNivelTaquilla(ctx_.session.nivel) && cerrada) return rechazo(texto::TituloValidacionSistema, kCerrada);
    return std::nullopt;
}

std::optional<Rechazo> VentaGanador::montoValido() {
    double tecleado = 0;
    if (!leerMontoVenta(pedido_.monto, tecleado) || valor_ <= 0) return verifique(texto::MontoNoValido);
    const bool enUnidades = pedido_.unidad == UnidadVenta::Ganadores;
    unidades_ = enUnidades ? tecleado : tecleado / valor_;
    dinero_ = enUnidades ? tecleado * valor_ : tecleado;
    // Neither the units nor their money may pass the largest amount.
    if (unidades_ > kMontoMaximo || dinero_ > kMontoMaximo) return verifique(texto::MontoNoValido);
    return std::nullopt;
}

// The session's minimum play, in the booth's currency.
std::optional<Rechazo> VentaGanador::montoMinimo() {
    const double minimo = grupo_.numberOr(ctx_.session.enDolares() ? "min_dol" : "min_bs");
    if (dinero_ + 1e-9 < minimo) return verifique(kMenorPermitido);
    return std::nullopt;
}

std::optional<Rechazo> VentaGanador::caballoValido() {
    if (!caballo_ || *caballo_ == 0 || *caballo_ > grupo_.integerOr("cab_max")) return verifique(texto::CaballoNoValido);
    return std::nullopt;
}

// The group's race open for sale.
std::optional<Rechazo> VentaGanador::carreraPermitida() {
    if (!carrera_ || *carrera_ != grupo_.integerOr("carrera")) return verifique(texto::CarreraNoPermitida);
    return std::nullopt;
}

std::optional<Rechazo> VentaGanador::caballoCorre() {
    if (!existe_) return verifique(texto::CaballoNoValido);
    if (caballoFila_.integer("retirado") != 0) return verifique(texto::CaballoRetirado);
    return std::nullopt;
}

// Read with the horse's locked row (the checks that use it run only once
// that row was found).
const VentaGanador::Cupo& VentaGanador::cupo() {
    if (!cupo_) cupo_ = Cupo();
    return *cupo_;
}

// A horse whose quota the administration set to zero.
std::optional<Rechazo> VentaGanador::cupoAbierto() {
    if (cupo().cupo && *cupo().cupo <= 0) return verifique(texto::CupoLleno);
    return std::nullopt;
}

// A race left with exactly four runners is refunded and not sold.
std::optional<Rechazo> VentaGanador::cuatroCorredores() {
    if (cupo().corredores != 4) return std::nullopt;
    db_->exec(kDevolverCarrera, {valor_, ctx_.session.grupo, *carrera_, fecha_});
    anotarPremios(*db_, fecha_, *carrera_, ctx_.session.grupo);
    return rechazo(texto::TituloParametrosVenta, kCuatroCaballos);
}

QString VentaGanador::disponible(double unidadesLibres) const {
    return pedido_.unidad == UnidadVenta::Ganadores
               ? textoUnidades(std::floor(unidadesLibres * 100 + 1e-6) / 100) + QStringLiteral(" GANADORES")
               : formatoMonto(unidadesLibres * valor_, ctx_.session.enDolares());
}

// The horse's quota; the supervisor may authorise a sale past it.
std::optional<Rechazo> VentaGanador::cupoDelCaballo() {
    const Cupo& c = cupo();
    if (pedido_.autorizada || !c.cupo || c.vendido + unidades_ <= *c.cupo + 1e-9) return std::nullopt;
    return rechazo(texto::TituloVerifiqueIntente,
                   texto::MontoMayorPermitido + disponible(std::max(0.0, *c.cupo - c.vendido)), true);
}

// The group's maximum per ticket; the supervisor may authorise a sale past it.
std::optional<Rechazo> VentaGanador::maximoPorBoleto() {
    const double maximo = grupo_.numberOr("apuesta_max_win");
    if (pedido_.autorizada || maximo <= 0 || dinero_ <= maximo + kCentavo / 10) return std::nullopt;
    return rechazo(texto::TituloVerifiqueIntente, texto::MontoMayorPermitido + disponible(maximo / valor_), true);
}

std::optional<Rechazo> VentaGanador::clienteExiste() {
    if (!pedido_.cliente.trimmed().isEmpty() && cliente_.empty()) return verifique(kClienteNoExiste);
    return std::nullopt;
}

std::optional<Rechazo> VentaGanador::saldoDelCliente() {
    if (cliente_.empty()) return std::nullopt;
    // The running balance, read with the client's row under lock.
    const double saldo = cliente_.first().number("saldo");
    if (saldo + kCentavo / 10 < dinero_) return verifique(texto::SinSaldoCliente + formatoMoneda(saldo));
    return std::nullopt;
}

// The client's limit per play: the VIP one or the ordinary one.
std::optional<Rechazo> VentaGanador::limiteDelCliente() {
    if (cliente_.empty()) return std::nullopt;
    const bool vip = cliente_.first().integer("tipo_cliente") == 2;
    const double limite = grupo_.numberOr(vip ? "cupovip" : "cupo_winxjugador");
    if (limite > 0 && dinero_ > limite + kCentavo / 10) return verifique(vip ? kCupoVip : kCupoJugador);
    return std::nullopt;
}

Insercion VentaGanador::fila(const QString& ficha) const {
    const Session& s = ctx_.session;
    BoletoGanador b;
    b.carrera = *carrera_;
    b.caballo = *caballo_;
    b.ganadores = unidades_;
    b.ch = s.ch;
    b.grupo = s.grupo;
    b.hora = hora_;
    b.fecha = fecha_;
    b.subgrupo = s.subgrupo;
    b.ficha = ficha;
    return b.insercion();
}

QString VentaGanador::prefijo() const {
    return prefijoBoleto(static_cast<int>(grupo_.integerOr("inicialboleto")), ctx_.session.grupo);
}

void VentaGanador::completar(Db& db, long long numero, const QString& codigo) {
    const Session& s = ctx_.session;
    // A client's play is a debit of the client's account.
    if (!cliente_.empty()) {
        MovimientoCliente m;
        m.idCliente = cliente_.first().integer("id_cliente");
        m.monto = -dinero_;
        m.tipo = QStringLiteral(" Ganadores");
        m.operacion = kOperacionJugada;
        m.idUsuario = s.idUsuario;
        m.banco = kBancoEfectivo;
        m.nuOperacion = codigo;
        m.fecha = fecha_;
        m.hora = hora_;
        m.observacion = QStringLiteral("CARRERA %1 CABALLO %2").arg(*carrera_).arg(*caballo_);
        insertar(db, m.insercion());
    }
    // The keys; the password path writes none.
    const long long fila = caballoFila_.integer("id_carrera");
    if (pedido_.autorizada) {
        kSoloCodigo.escribir(db, fila, {codigo, s.ch, numero});
        return;
    }
    const LlavesVenta k = llavesVenta(numero, *caballo_, unidades_, *carrera_, s.grupo);
    kLlaves.escribir(db, fila, {codigo, k.llave, k.llave2, k.llave5, s.ch, numero});
}

BoletoVendido VentaGanador::boleto(long long numero, const QString& codigo) const {
    return {numero,     codigo,  *carrera_, *caballo_, caballoFila_.text("caballo"), unidades_, unidades_ * valor_,
            fecha_,     hora_,   pedido_.autorizada};
}

Impreso VentaGanador::ticket(long long numero, const QString& codigo, bool grafico) const {
    return ticketGanador(ctx_, grupo_, boleto(numero, codigo), grafico);
}

Impreso ticketGanador(Context& ctx, const Row& grupo, const BoletoVendido& b, bool grafico) {
    DatosBoleto d;
    d.centro = ctx.session.ch;
    d.taquilla = ctx.session.usuario;
    d.fecha = b.fecha;
    d.hora = b.hora;
    d.codigo = b.codigo;
    d.carrera = b.carrera;
    d.caballo = b.caballo;
    d.nombreCaballo = b.nombreCaballo;
    d.ganadores = b.ganadores;
    d.costo = b.costo;
    d.enDolares = ctx.session.enDolares();
    d.diasValidez = static_cast<int>(grupo.integerOr("duracionboletos"));
    d.imprimirDatos = grupo.integerOr("impresion_datos") == 1;
    d.empresa = grupo.textOr("empresa");
    d.rif = grupo.textOr("rif");
    if (!b.conClave) return ticketVenta(d, grafico);
    d.hipodromo = Row::toText(ctx.servidor().scalar("SELECT hipodromo FROM hipodromos WHERE id_hipodromo = ?",
                                                    {grupo.integerOr("id_hipodromo")}));
    return ticketClave(d, grafico);
}

}  // namespace hipico
