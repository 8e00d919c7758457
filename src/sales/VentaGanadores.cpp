#include "sales/VentaGanadores.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "sales/TicketKeys.h"
#include "sales/TicketRules.h"

#include <algorithm>
#include <cmath>

namespace hipico {

namespace {

constexpr double kCentavo = 0.005;
// Larger amounts are typing mistakes, not bets.
constexpr double kMontoMaximo = 1e10;
// Race and horse numbers above this are typing mistakes.
constexpr long long kNumeroMaximo = 1000000;

double num(const Row& r, const char* c) { return r.has(c) ? r.number(c) : 0.0; }
long long ent(const Row& r, const char* c) { return r.has(c) ? r.integer(c) : 0; }
QString txt(const Row& r, const char* c) { return r.has(c) ? r.text(c) : QString(); }

// An amount typed with a decimal comma, at most two decimals, above zero.
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

// What a refused or finished step leaves for the user, shown once the
// transaction has ended (never while rows are locked).
struct Aviso {
    Icon icono = Icon::Critical;
    QString titulo;
    QString texto;
};

const QString kCerrada = QStringLiteral("LA CARRERA ESTA CERRADA, NO SE PUEDE HACER NINGUNA VENTA");
const QString kMenorPermitido = QStringLiteral("EL MONTO ES MENOR AL PERMITIDO");
const QString kMontoInvalido = QStringLiteral("EL MONTO NO ES VALIDO");
const QString kCaballoInvalido = QStringLiteral("EL NUMERO DE CABALLO NO ES VALIDO");
const QString kCaballoRetirado = QStringLiteral("EL CABALLO ESTA RETIRADO");
const QString kCarreraNoPermitida = QStringLiteral("EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA");
const QString kCupoLleno = QStringLiteral("SE HA LLENADO EL CUPO DE VENTA A ESTE CABALLO");
const QString kCuatroCaballos = QStringLiteral("NO SE VENDE CON 4 CABALLOS");
const QString kMayorPermitido = QStringLiteral("EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: ");
const QString kClienteNoExiste = QStringLiteral("EL CLIENTE NO EXISTE ");
const QString kSinSaldo =
    QStringLiteral("El Cliente no posee saldo suficiente para hacer esta jugada, dispobible: ");
const QString kCupoVip = QStringLiteral("EL MONTO ES MAYOR AL CUPO POR JUGADOR VIP");
const QString kCupoJugador = QStringLiteral("EL MONTO ES MAYOR AL CUPO POR JUGADOR");
const QString kVerifiqueBoleto = QStringLiteral("VERIFIQUE EL NUMERO DEL BOLETO");
const QString kNoAnular = QStringLiteral("EL BOLETO NO SE PUEDE ANULAR");
const QString kSinAcceso = QStringLiteral(" Usted no posee acceso a esta parte del sistema");

// The statements of the sale, prepared once per connection.
// The group's sale parameters (read again for every sale) with the key of
// the horse's race-card row on the group's track. The race open for sale and
// the track are the group's own when it has them, else the system's current
// race and track (the ones the administration opens).
const char* const kGrupoYCaballo =
    "SELECT g.grupo, g.cab_max, IF(g.carrera <> 0, g.carrera, k.carrera) AS carrera, "
    "IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) AS id_hipodromo, g.valor_ganador, g.apuesta_max_win, "
    "g.cupo_winxjugador, g.cupovip, g.inicialboleto, g.clave_win, g.pedirclave, g.admin_cupo, g.opcioncupowin, "
    "g.empresa, g.rif, g.impresion_datos, g.venta_ganadores, g.min_bs, g.min_dol, g.duracionboletos, c.id_carrera "
    "FROM grupos g JOIN configuracion k LEFT JOIN carreras c ON c.carrera = ? and c.fecha = ? and "
    "c.nu_caballo = ? and c.id_hipodromo = IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) "
    "WHERE g.grupo = ? ORDER BY c.id_carrera LIMIT 1";
// The race open for sale and the track of the booth's group, as above.
const char* const kCarreraYPista =
    "SELECT IF(g.carrera <> 0, g.carrera, k.carrera) AS carrera, "
    "IF(g.id_hipodromo <> 0, g.id_hipodromo, k.id_hipodromo) AS id_hipodromo "
    "FROM grupos g JOIN configuracion k WHERE g.grupo = ? LIMIT 1";
const char* const kMismoCaballoOtrasPistas =
    "SELECT id_carrera FROM carreras where carrera = ? and fecha = ? and nu_caballo = ? order by id_carrera";
const char* const kBloquearCaballo =
    "SELECT id_carrera, fecha, carrera, id_hipodromo, nu_caballo, caballo, retirado, venta FROM carreras where "
    "id_carrera = ? FOR UPDATE";
const char* const kContarCorredores =
    "SELECT count(carrera) as cant_cabs FROM carreras where carrera=? and retirado=0 and fecha=? and "
    "id_hipodromo = ?;";
const char* const kDevolverCarrera =
    "update ma_principal set estatus=4,cobrado=(ganadores*?) where grupo=? AND carrera=? and (estatus<>3 and "
    "estatus <>4) and fecha  = ?";
// With quotas enforced, one round trip reads the runners, what the horse
// sold (by the group, or by the whole centre) and the centre's quota row.
const char* const kCorredoresYCupoGrupo =
    "SELECT (SELECT count(carrera) FROM carreras where carrera=? and retirado=0 and fecha=? and id_hipodromo = ?) "
    "as cant_cabs, (SELECT sum(ganadores) FROM ma_principal where caballo=? and carrera =? and ch = ? and grupo = ? "
    "and fecha = ?) as venta_ch, v.* FROM (SELECT 1 AS uno) x LEFT JOIN venta_cupo_ganadores v ON v.ch = ?";
const char* const kCorredoresYCupoCentro =
    "SELECT (SELECT count(carrera) FROM carreras where carrera=? and retirado=0 and fecha=? and id_hipodromo = ?) "
    "as cant_cabs, (SELECT sum(ganadores) FROM ma_principal where caballo=? and carrera =? and ch = ? and fecha = ?) "
    "as venta_ch, v.* FROM (SELECT 1 AS uno) x LEFT JOIN venta_cupo_ganadores v ON v.ch = ?";
const char* const kCliente = "SELECT * FROM clientes where  usuario  = ? and ch=? FOR UPDATE";
const char* const kSaldoCliente = "SELECT sum(monto) as saldo FROM jugadas_clientes  Where  id_cliente = ?";
const char* const kInsertarBoleto =
    "INSERT INTO `ma_principal` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?);";
const char* const kInsertarBoletoClave =
    "INSERT INTO `ma_principal` (`numero`,`carrera`,`caballo`,`ganadores`,`ch`,`grupo`,`hora`,`fecha`,`cobrado`,"
    "`estatus`,`fecha_cobro`,`nu_boleto`,`subgrupo`) VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?);";
const char* const kDebitoCliente = "INSERT INTO `jugadas_clientes` VALUES (NULL,?,?,?,?,?,?,?,?,?,?);";
const char* const kLlaves =
    "update ma_principal set nu_boleto=?,llave=?,llave2=?,llave5=? Where ch=? and numero = ? limit 1   ";
const char* const kSoloCodigo = "update ma_principal set nu_boleto=? Where ch=? and numero = ? limit 1   ";

// The working day ("YYYY-MM-DD").
QString fechaTrabajo(const Context& ctx) {
    return ctx.session.fecha.isEmpty() ? fechaSql(ctx.clock.today()) : ctx.session.fecha;
}

// The client movement of a winner play: a JUGADA operation in cash.
constexpr int kOperacionJugada = 2;
constexpr int kBancoEfectivo = 1;

}  // namespace

VentaGanadores::VentaGanadores(Context& ctx) : ctx_(ctx) {}

void VentaGanadores::cargar() {
    cargarImpresion(ctx_);
    unidad_ = leerUnidadVenta(ctx_.config);
}

Row VentaGanadores::leerGrupo(const QString& carrera, const QString& caballo) {
    const long long c = leerEntero(carrera, kNumeroMaximo).value_or(-1);
    const long long h = leerEntero(caballo, kNumeroMaximo).value_or(-1);
    const Recordset rs = ctx_.servidor().query(kGrupoYCaballo, {c, fechaTrabajo(ctx_), h, ctx_.session.grupo});
    return rs.empty() ? Row() : rs.first();
}

bool VentaGanadores::enDolares() const { return ctx_.session.enDolares(); }

double VentaGanadores::valorGanador() const {
    const double grupo = ctx_.session.parametro(QStringLiteral("valor_ganador"));
    return grupo > 0 ? grupo : ctx_.session.ajuste(QStringLiteral("valor_ganador"));
}

QString VentaGanadores::montoPantalla(double monto) const {
    if (ctx_.session.mascara == 1) return QString::number(std::round(monto * 100) / 100, 'f', 2);
    return formatoMonto(monto, enDolares());
}

QString VentaGanadores::etiquetaMoneda() const {
    return enDolares() ? QStringLiteral("$") : QStringLiteral("BS");
}

long long VentaGanadores::carreraDelGrupo() const {
    const Recordset rs = ctx_.servidor().query(kCarreraYPista, {ctx_.session.grupo});
    return rs.empty() ? 0 : rs.first().integer("carrera");
}

long long VentaGanadores::pistaDelGrupo() const {
    const Recordset rs = ctx_.servidor().query(kCarreraYPista, {ctx_.session.grupo});
    return rs.empty() ? 0 : rs.first().integer("id_hipodromo");
}

bool VentaGanadores::grafico() const { return modoImpresora(ctx_.session.confLocal.puerto) == ModoImpresora::Grafica; }

void VentaGanadores::refusal(const QString& titulo, const QString& texto) { ctx_.dialogs.refuse(titulo, texto); }


// ---------------------------------------------------------------- sale

VentaGanadores::Venta VentaGanadores::procesarVenta(const QString& carrera, const QString& caballo,
                                                    const QString& monto, const QString& cliente) {
    pendiente_.reset();
    try {
        Solicitud s{carrera, caballo, monto, cliente, leerGrupo(carrera, caballo), unidad_, false};
        return vender(s);
    } catch (const DbError& e) {
        refusal(kTituloValidacion, e.text());
        return {};
    }
}

VentaGanadores::Venta VentaGanadores::ventaConClave(const QString& clave) {
    if (!pendiente_) return {};
    Solicitud s = *pendiente_;
    pendiente_.reset();
    const QString claveGrupo = txt(s.grupo, "clave_win");
    if (claveGrupo.isEmpty() || clave != claveGrupo) {
        refusal(QStringLiteral("Permiso de Venta Negado"), QStringLiteral("La Clave Fue Incorrecta"));
        return {};
    }
    s.autorizada = true;
    try {
        return vender(s);
    } catch (const DbError& e) {
        refusal(kTituloValidacion, e.text());
        return {};
    }
}

VentaGanadores::Venta VentaGanadores::vender(const Solicitud& s) {
    Db& db = ctx_.servidor();
    const Session& ses = ctx_.session;
    const Row& g = s.grupo;
    const QString fecha = fechaTrabajo(ctx_);
    const QString hora = horaTexto(ctx_.clock.now().time());
    const long long pista = ent(g, "id_hipodromo");
    const double valor = num(g, "valor_ganador") > 0 ? num(g, "valor_ganador") : ses.ajuste("valor_ganador");
    const bool enUnidades = s.unidad == UnidadVenta::Ganadores;

    const auto carreraTecleada = leerEntero(s.carrera, kNumeroMaximo);
    const auto caballoTecleado = leerEntero(s.caballo, kNumeroMaximo);
    const bool carreraLeida = carreraTecleada.has_value();
    const bool caballoLeido = caballoTecleado.has_value();
    const long long carrera = carreraTecleada.value_or(0), caballo = caballoTecleado.value_or(0);

    // Step 2: the horse's race-card row. Its key came with the group's
    // parameters; the row is locked by key inside the transaction (a locking
    // read by race would lock every horse of the race).
    const long long idCaballo = ent(g, "id_carrera");
    QVector<long long> aBloquear;
    if (idCaballo > 0) aBloquear << idCaballo;
    if (carreraLeida && caballoLeido) {
        // A quota shared by the centre's groups covers the same race and horse on every track.
        if (ent(g, "admin_cupo") == 1 && ent(g, "opcioncupowin") == 1)
            for (const Row& r : db.query(kMismoCaballoOtrasPistas, {carrera, fecha, caballo}))
                if (!aBloquear.contains(r.integer("id_carrera"))) aBloquear << r.integer("id_carrera");
        std::sort(aBloquear.begin(), aBloquear.end());
    }

    struct Salida {
        Resultado resultado = Resultado::Rechazado;
        Aviso aviso;
        Boleto boleto;
    };
    auto rechazo = [](const QString& titulo, const QString& texto) {
        return Salida{Resultado::Rechazado, {Icon::Critical, titulo, texto}, {}};
    };

    const Salida out = db.inTransaction([&]() -> Salida {
        // Every lock first (the horse rows, then the client's row), always in
        // that order; the plain reads that follow see what committed before.
        Row fila;
        bool existe = false;
        for (long long id : aBloquear) {
            const Recordset r = db.query(kBloquearCaballo, {id});
            // The row must still be this race's horse on the group's track and day.
            if (id == idCaballo && !r.empty() && r.first().integer("carrera") == carrera &&
                r.first().integer("nu_caballo") == caballo && r.first().integer("id_hipodromo") == pista &&
                r.first().text("fecha") == fecha) {
                fila = r.first();
                existe = true;
            }
        }
        const QString usuarioCliente = s.cliente.trimmed();
        const Recordset clienteBloqueado =
            usuarioCliente.isEmpty() ? Recordset() : db.query(kCliente, {usuarioCliente, ses.ch});

        // Step 3: a closed race (booth levels), or a group whose winner sale is off.
        if (esNivelTaquilla(ses.nivel) &&
            ((existe && fila.integer("venta") == 0) || (g.has("venta_ganadores") && ent(g, "venta_ganadores") == 0)))
            return rechazo(kTituloValidacion, kCerrada);

        // Step 4: the amount and the minimum play.
        double tecleado = 0;
        if (!leerMontoVenta(s.monto, tecleado) || valor <= 0) return rechazo(kTituloVerifique, kMontoInvalido);
        const double unidades = enUnidades ? tecleado : tecleado / valor;
        const double dinero = enUnidades ? tecleado * valor : tecleado;
        const double minimo = ses.enDolares() ? num(g, "min_dol") : num(g, "min_bs");
        if (dinero + 1e-9 < minimo) return rechazo(kTituloVerifique, kMenorPermitido);

        // Step 5: the horse number.
        if (!caballoLeido || caballo == 0 || caballo > ent(g, "cab_max")) return rechazo(kTituloVerifique, kCaballoInvalido);
        // Step 6: the group's race open for sale.
        if (!carreraLeida || carrera != ent(g, "carrera")) return rechazo(kTituloVerifique, kCarreraNoPermitida);
        if (!existe) return rechazo(kTituloVerifique, kCaballoInvalido);
        if (fila.integer("retirado") != 0) return rechazo(kTituloVerifique, kCaballoRetirado);

        // Step 7: a horse whose quota the administration set to zero.
        const bool conCupos = ent(g, "admin_cupo") == 1;
        const bool cupoCentro = ent(g, "opcioncupowin") == 1;
        std::optional<double> cupo;
        long long corredores = 0;
        double vendido = 0;
        if (conCupos) {
            const Row q = cupoCentro ? db.query(kCorredoresYCupoCentro,
                                                {carrera, fecha, pista, caballo, carrera, ses.ch, fecha, ses.ch})
                                           .first()
                                     : db.query(kCorredoresYCupoGrupo, {carrera, fecha, pista, caballo, carrera,
                                                                         ses.ch, ses.grupo, fecha, ses.ch})
                                           .first();
            const QString columna = QStringLiteral("cab") + QString::number(caballo);
            if (q.has(columna) && !q.isNull(columna)) cupo = q.number(columna);
            corredores = q.integer("cant_cabs");
            vendido = q.number("venta_ch");
            if (cupo && *cupo <= 0) return rechazo(kTituloVerifique, kCupoLleno);
        } else {
            corredores = Row::toInteger(db.scalar(kContarCorredores, {carrera, fecha, pista}));
        }

        // Step 8: a race left with exactly four runners is refunded and not sold.
        if (corredores == 4) {
            db.exec(kDevolverCarrera, {valor, ses.grupo, carrera, fecha});
            return rechazo(kTituloParametros, kCuatroCaballos);
        }

        // Step 9: the horse's quota and the per-ticket maximum (the supervisor may authorise them).
        if (!s.autorizada) {
            auto disponible = [&](double unidadesLibres) {
                return enUnidades ? textoUnidades(std::floor(unidadesLibres * 100 + 1e-6) / 100)
                                  : formatoMonto(unidadesLibres * valor, ses.enDolares());
            };
            if (cupo) {
                if (vendido + unidades > *cupo + 1e-9) {
                    Salida r = rechazo(kTituloVerifique, kMayorPermitido + disponible(std::max(0.0, *cupo - vendido)));
                    r.resultado = Resultado::PedirClave;
                    return r;
                }
            }
            const double maximo = num(g, "apuesta_max_win");
            if (maximo > 0 && dinero > maximo + kCentavo / 10) {
                Salida r = rechazo(kTituloVerifique, kMayorPermitido + disponible(maximo / valor));
                r.resultado = Resultado::PedirClave;
                return r;
            }
        }

        // Step 10: a client play needs the client, the balance and the client's limit.
        long long idCliente = 0;
        if (!usuarioCliente.isEmpty()) {
            if (clienteBloqueado.empty()) return rechazo(kTituloVerifique, kClienteNoExiste);
            const Row& c = clienteBloqueado.first();
            idCliente = c.integer("id_cliente");
            const double saldo = Row::toNumber(db.scalar(kSaldoCliente, {idCliente}));
            if (saldo + kCentavo / 10 < dinero) return rechazo(kTituloVerifique, kSinSaldo + formatoMoneda(saldo));
            const bool vip = c.integer("tipo_cliente") == 2;
            const double limite = vip ? num(g, "cupovip") : num(g, "cupo_winxjugador");
            if (limite > 0 && dinero > limite + kCentavo / 10)
                return rechazo(kTituloVerifique, vip ? kCupoVip : kCupoJugador);
        }

        // Step 11: the ticket; its number is the insert's own key.
        if (s.autorizada)
            db.exec(kInsertarBoletoClave,
                    {carrera, caballo, unidades, ses.ch, ses.grupo, hora, fecha, 0, 0, "0", "", ses.subgrupo});
        else
            db.exec(kInsertarBoleto, {carrera, caballo, unidades, ses.ch, ses.grupo, hora, fecha, 0, 0, "0", "",
                                      ses.subgrupo, "0", "0", "0", "0", "0", "0"});
        const long long numero = db.lastInsertId();
        // Step 13: the code.
        const QString codigo =
            codigoBoleto(prefijoBoleto(static_cast<int>(ent(g, "inicialboleto")), ses.grupo), desdeFechaSql(fecha),
                         numero);
        // Step 12: the client's debit.
        if (idCliente > 0)
            db.exec(kDebitoCliente, {idCliente, -dinero, " Ganadores", kOperacionJugada, ses.idUsuario,
                                     kBancoEfectivo, codigo, fecha, hora,
                                     QStringLiteral("CARRERA %1 CABALLO %2").arg(carrera).arg(caballo)});
        // Step 14: the keys (the password path writes none).
        if (s.autorizada) {
            db.exec(kSoloCodigo, {codigo, ses.ch, numero});
        } else {
            const LlavesVenta k = llavesVenta(numero, caballo, unidades, carrera, ses.grupo);
            db.exec(kLlaves, {codigo, k.llave, k.llave2, k.llave5, ses.ch, numero});
        }
        Salida ok;
        ok.resultado = Resultado::Vendido;
        ok.boleto = Boleto{numero, codigo, carrera, caballo, fila.text("caballo"), unidades, unidades * valor,
                           fecha, hora, s.autorizada};
        return ok;
    });

    if (out.resultado != Resultado::Vendido) {
        ctx_.dialogs.message(out.aviso.icono, out.aviso.titulo, out.aviso.texto);
        if (out.resultado == Resultado::PedirClave) {
            if (ent(g, "pedirclave") != 1) return {};
            pendiente_ = s;
        }
        return {out.resultado, {}};
    }
    // Step 15: the ticket is printed (the window refreshes its totals).
    imprimir(ticketDe(out.boleto, g));
    return {Resultado::Vendido, out.boleto};
}

QString VentaGanadores::hipodromo(long long id) {
    return Row::toText(ctx_.servidor().scalar("SELECT hipodromo FROM hipodromos WHERE id_hipodromo = ?", {id}));
}

Impreso VentaGanadores::ticketDe(const Boleto& b, const Row& g) {
    DatosBoleto d;
    d.centro = ctx_.session.ch;
    d.taquilla = ctx_.session.usuario;
    d.fecha = b.fecha;
    d.hora = b.hora;
    d.codigo = b.codigo;
    d.carrera = b.carrera;
    d.caballo = b.caballo;
    d.nombreCaballo = b.nombreCaballo;
    d.ganadores = b.ganadores;
    d.costo = b.costo;
    d.enDolares = enDolares();
    d.diasValidez = static_cast<int>(ent(g, "duracionboletos"));
    d.imprimirDatos = ent(g, "impresion_datos") == 1;
    d.empresa = txt(g, "empresa");
    d.rif = txt(g, "rif");
    if (b.conClave) {
        d.hipodromo = hipodromo(ent(g, "id_hipodromo"));
        return ticketClave(d, grafico());
    }
    return ticketVenta(d, grafico());
}

bool VentaGanadores::imprimir(const Impreso& impreso) {
    ultimo_ = impreso;
    const ConfLocal& conf = ctx_.session.confLocal;
    if (conf.impresion != 1) return true;
    try {
        crearImpresora(conf)->imprimir(impreso);
        return true;
    } catch (const ErrorImpresion& e) {
        refusal(kTituloImpresora, QStringLiteral("NO SE PUDO IMPRIMIR: ") + e.motivo());
        return false;
    }
}

bool VentaGanadores::reimprimir() {
    if (!ultimo_) return false;
    return imprimir(*ultimo_);
}

// ---------------------------------------------------------------- payment

std::optional<VentaGanadores::Consulta> VentaGanadores::evaluar(const Row& b, bool avisar) {
    const QString fecha = fechaTrabajo(ctx_);
    auto no = [&](Icon icono, const QString& texto) -> std::optional<Consulta> {
        if (avisar) ctx_.dialogs.message(icono, kTituloCobro, texto);
        return std::nullopt;
    };
    if (b.text("ch") != ctx_.session.ch) return no(Icon::Critical, QStringLiteral("EL BOLETO NO PERTENECE A ESTA TAQUILLA"));
    const int estatus = static_cast<int>(b.integer("estatus"));
    if (estatus == 0) return no(Icon::Critical, QStringLiteral("BOLETO NO GANADOR"));
    if (estatus == 2 || estatus == 3) return no(Icon::Critical, QStringLiteral("BOLETO YA PAGADO"));
    if (estatus != 1 && estatus != 4) return no(Icon::Critical, kVerifiqueBoleto);
    const QDate venta = desdeFechaSql(b.text("fecha"));
    const QDate hoy = desdeFechaSql(fecha);
    const long long dias = venta.isValid() && hoy.isValid() ? venta.daysTo(hoy) : 0;
    if (dias > ctx_.session.parametro(QStringLiteral("duracionboletos")))
        return no(Icon::Critical, QStringLiteral("BOLETO CADUCADO"));
    if (estatus == 1 && b.text("fecha") != fecha)
        return no(Icon::Warning, QStringLiteral(
                                     "ATENCION ESTE BOLETO ES DE UN DIA ANTERIOR, DEBE PEDIR EL DINERO A LA ADMINISTRACION"));
    Consulta c;
    c.pagable = true;
    c.codigo = b.text("nu_boleto");
    c.estatus = estatus;
    c.monto = b.number("cobrado");
    c.mensaje = estatus == 1 ? QStringLiteral("CABALLO GANADOR") : QStringLiteral("CABALLO RETIRADO");
    return c;
}

VentaGanadores::Consulta VentaGanadores::buscarBoletoCobro(const QString& codigoTecleado) {
    porCobrar_.reset();
    const QString codigo = codigoTecleado.trimmed();
    try {
        Db& db = ctx_.servidor();
        const Recordset rs = codigo.isEmpty() ? Recordset()
                                              : db.query("SELECT * FROM ma_principal Where nu_boleto = ?", {codigo});
        if (rs.empty()) {
            refusal(kTituloCobro, kVerifiqueBoleto);
            return {};
        }
        const Row& b = rs.first();
        const Recordset copia = db.query("SELECT * FROM ventas_ganadores Where nu_boleto = ?", {codigo});
        const Alteracion a = verificarBoleto(b, copia.empty() ? std::nullopt : std::optional<Row>(copia.first()));
        if (a != Alteracion::Ninguna) {
            ctx_.dialogs.message(Icon::Critical, kTituloSeguridad, mensajeAlteracion(a));
            return {};
        }
        const std::optional<Consulta> c = evaluar(b, true);
        if (!c) return {};
        porCobrar_ = c;
        return *c;
    } catch (const DbError& e) {
        refusal(kTituloCobro, e.text());
        return {};
    }
}

bool VentaGanadores::cobrarBoleto() {
    if (!porCobrar_) return false;
    const Consulta pedido = *porCobrar_;
    porCobrar_.reset();
    const QString hoy = fechaTrabajo(ctx_);
    struct Pago {
        bool hecho = false;
        Aviso aviso;
        double monto = 0;
    };
    Pago pago;
    try {
        Db& db = ctx_.servidor();
        pago = db.inTransaction([&]() -> Pago {
            // The ticket's row is locked: a second booth pressing at the same time waits here
            // and then finds the ticket paid.
            const Recordset rs = db.query("SELECT * FROM ma_principal Where nu_boleto = ? FOR UPDATE", {pedido.codigo});
            if (rs.empty()) return {false, {Icon::Critical, kTituloCobro, kVerifiqueBoleto}, 0};
            const Row& b = rs.first();
            const Recordset copia = db.query("SELECT * FROM ventas_ganadores Where nu_boleto = ?", {pedido.codigo});
            const Alteracion a =
                verificarBoleto(b, copia.empty() ? std::nullopt : std::optional<Row>(copia.first()));
            if (a != Alteracion::Ninguna) return {false, {Icon::Critical, kTituloSeguridad, mensajeAlteracion(a)}, 0};
            const int estatus = static_cast<int>(b.integer("estatus"));
            if (estatus == 2 || estatus == 3)
                return {false, {Icon::Critical, kTituloCobro, QStringLiteral("BOLETO YA PAGADO")}, 0};
            if (!evaluar(b, false)) return {false, {Icon::Critical, kTituloCobro, kVerifiqueBoleto}, 0};
            const int pagado = estatus == 1 ? 2 : 3;
            const double monto = b.number("cobrado");
            const long long cambiados =
                db.exec("Update ma_principal set estatus=?,fecha_cobro=? Where nu_boleto = ? and numero = ? and "
                        "estatus = ?",
                        {pagado, hoy, pedido.codigo, b.integer("numero"), estatus});
            if (cambiados != 1) return {false, {Icon::Critical, kTituloCobro, QStringLiteral("BOLETO YA PAGADO")}, 0};
            db.exec("Update ventas_ganadores set estatus=?,fecha_cobro=? Where nu_boleto = ? and estatus = ?",
                    {pagado, hoy, pedido.codigo, estatus});
            // The day row of the ticket's group and sale day.
            db.exec("INSERT IGNORE INTO ventas_ganadores_general (grupo, fecha) VALUES (?, ?)",
                    {b.text("grupo"), b.text("fecha")});
            db.exec("Update ventas_ganadores_general set premios=premios + ?,saldo=saldo - ?,"
                    "monto_porpagar=monto_porpagar - ? Where fecha =? and grupo=? limit 1  ",
                    {monto, monto, monto, b.text("fecha"), b.text("grupo")});
            return {true, {}, monto};
        });
    } catch (const DbError& e) {
        refusal(kTituloCobro, e.text());
        return false;
    }
    if (!pago.hecho) {
        ctx_.dialogs.message(pago.aviso.icono, pago.aviso.titulo, pago.aviso.texto);
        return false;
    }
    if (ctx_.session.ticketCobro == 1) {
        DatosCobro d{ctx_.session.ch, ctx_.session.usuario, hoy, horaTexto(ctx_.clock.now().time()), pedido.codigo,
                     pago.monto, enDolares()};
        imprimir(reciboCobro(d, grafico()));
    }
    return true;
}

// ---------------------------------------------------------------- void

bool VentaGanadores::puedeAnular() const {
    return !esNivelTaquilla(ctx_.session.nivel) || ctx_.session.anularBoletoWin == 1;
}

bool VentaGanadores::anularBoleto() {
    if (!puedeAnular()) {
        refusal(kTituloAnulacion, kSinAcceso);
        return false;
    }
    const std::optional<QString> codigoTexto =
        ctx_.dialogs.ask(QStringLiteral("CODIGO DEL BOLETO"), QStringLiteral("INGRESE EL CODIGO DEL BOLETO"));
    if (!codigoTexto || codigoTexto->trimmed().isEmpty()) return false;
    const QString codigo = codigoTexto->trimmed();
    const std::optional<QString> motivoTexto = ctx_.dialogs.ask(
        QStringLiteral("MOTIVO DE LA ANULACIÓN DEL BOLETO "), QStringLiteral("INGRESE EL MOTIVO"), QStringLiteral("ANULADO"));
    if (!motivoTexto) return false;
    const QString motivo = motivoTexto->trimmed();
    if (motivo.isEmpty()) {
        refusal(QStringLiteral("Verificación del Sistema"),
                QStringLiteral("No se puede realizar la operación sin un motivo"));
        return false;
    }
    const QString fecha = fechaTrabajo(ctx_);
    Aviso aviso;
    bool anulado = false;
    try {
        Db& db = ctx_.servidor();
        const Recordset rs =
            db.query("SELECT * FROM ma_principal Where nu_boleto=? and ch=? ", {codigo, ctx_.session.ch});
        if (rs.empty()) {
            refusal(kTituloAnulacion, QStringLiteral("EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO"));
            return false;
        }
        const long long numero = rs.first().integer("numero");
        anulado = db.inTransaction([&]() -> bool {
            const Recordset actual = db.query("SELECT * FROM ma_principal Where numero = ? FOR UPDATE", {numero});
            if (actual.empty()) {
                aviso = {Icon::Critical, kTituloAnulacion,
                         QStringLiteral("EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO")};
                return false;
            }
            const Row& b = actual.first();
            if (b.text("fecha") < fecha || b.integer("estatus") != 0) {
                aviso = {Icon::Critical, kTituloAnulacion, kNoAnular};
                return false;
            }
            if (carreraProcesada(db, b.text("fecha"), b.integer("carrera"))) {
                aviso = {Icon::Critical, kTituloAnulacion,
                         QStringLiteral("EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA")};
                return false;
            }
            escribirAnulacion(db, b, motivo, ctx_.session.usuario);
            return true;
        });
    } catch (const DbError& e) {
        refusal(kTituloAnulacion, e.text());
        return false;
    }
    if (!anulado) {
        ctx_.dialogs.message(aviso.icono, aviso.titulo, aviso.texto);
        return false;
    }
    ctx_.dialogs.inform(kTituloAnulacion, QStringLiteral("BOLETO ANULADO CON EXITO"));
    return true;
}

// ---------------------------------------------------------------- totals and lists

namespace {

TotalesDia totales(Db& db, const QString& fecha, const QString& ch, double valor, long long desde, long long hasta) {
    TotalesDia t;
    // A range of races adds one fixed term; the values stay bound.
    const bool rango = desde > 0;
    const std::string carreras = rango ? " and carrera between ? and ?" : "";
    Params p{fecha, ch};
    if (rango) p.insert(p.end(), {desde, hasta});
    t.anulados = Row::toInteger(db.scalar(
        "SELECT count(numero)as cant_anulados FROM bitacora where (estatus=5) and fecha= ? and taquilla=?" + carreras,
        p));
    const Row due = db.query("SELECT sum(cobrado) as monto_porcobrar,count(cobrado)as cant_mpc FROM ma_principal "
                             "where (estatus=4 or estatus=1)  and fecha= ? and ch=?" +
                                 carreras,
                             p)
                        .first();
    t.porCobrar = due.number("monto_porcobrar");
    t.cantPorCobrar = due.integer("cant_mpc");
    const Row paid = db.query("SELECT sum(cobrado) as monto_cobrado,count(cobrado)as cant_mc FROM ma_principal "
                              "where (estatus=2 or estatus=3)  and fecha = ? and ch=?" +
                                  carreras,
                              p)
                         .first();
    t.cobrado = paid.number("monto_cobrado");
    t.cantCobrado = paid.integer("cant_mc");
    const Row sold = db.query(
                           "SELECT sum(ganadores) as venta,count(cobrado)as cant_venta FROM ma_principal where  fecha= ? "
                           "and ch=?" +
                               carreras,
                           p)
                         .first();
    t.unidadesVendidas = sold.number("venta");
    t.venta = t.unidadesVendidas * valor;
    t.cantVenta = sold.integer("cant_venta");
    return t;
}

}  // namespace

TotalesDia VentaGanadores::Totalizar_Dia() { return Cuadrar(0, 0); }

TotalesDia VentaGanadores::Cuadrar(long long desde, long long hasta) {
    return totales(ctx_.servidor(), fechaTrabajo(ctx_), ctx_.session.ch, valorGanador(), desde, hasta);
}

QVector<VentaGanadores::VentaCaballo> VentaGanadores::Calcular_VentasCaballos(long long carrera) {
    QVector<VentaCaballo> out;
    for (const Row& r : ctx_.servidor().query("SELECT caballo,sum(ganadores) as venta FROM ma_principal where carrera "
                                             "=? and fecha  = ?  and ch=? group by caballo",
                                             {carrera, fechaTrabajo(ctx_), ctx_.session.ch}))
        out.append({r.integer("caballo"), r.number("venta")});
    return out;
}

QVector<VentaGanadores::Corredor> VentaGanadores::corredores(long long carrera) {
    QVector<Corredor> out;
    for (const Row& r : ctx_.servidor().query(
             "SELECT id_carrera ,fecha,carrera,caballo,retirado,nu_caballo FROM carreras Where carrera = ? and fecha "
             "= ? and id_hipodromo =?   order by id_carrera ",
             {carrera, fechaTrabajo(ctx_), pistaDelGrupo()}))
        out.append({r.integer("nu_caballo"), r.text("caballo"), r.integer("retirado") != 0});
    return out;
}

QVector<VentaGanadores::CarreraDia> VentaGanadores::carreras() {
    QVector<CarreraDia> out;
    for (const Row& r : ctx_.servidor().query(
             "Select distinct carrera,venta from carreras where fecha = ? and id_hipodromo  = ? order by carrera",
             {fechaTrabajo(ctx_), pistaDelGrupo()})) {
        if (!out.isEmpty() && out.back().carrera == r.integer("carrera")) {
            out.back().abierta = out.back().abierta || r.integer("venta") != 0;
            continue;
        }
        out.append({r.integer("carrera"), r.integer("venta") != 0});
    }
    return out;
}

// ---------------------------------------------------------------- sale unit

bool VentaGanadores::cambiarUnidad(UnidadVenta nueva) {
    const QString nombre = nueva == UnidadVenta::Ganadores ? QStringLiteral("GANADORES") : QStringLiteral("BOLIVARES");
    if (!ctx_.dialogs.confirm(QStringLiteral("Confirmar el Cambio"),
                              QStringLiteral("¿Esta usted seguro de querer cambiar la unidad de venta a ") + nombre +
                                  QStringLiteral("?")))
        return false;
    guardarUnidadVenta(ctx_.config, nueva);
    unidad_ = nueva;
    ctx_.dialogs.inform(QStringLiteral("Parametros de Venta"), QStringLiteral("Los cambios se hicierón con exíto"));
    return true;
}

// ---------------------------------------------------------------- printed summary

bool VentaGanadores::imprimirResumen(long long desde, long long hasta) {
    if (desde > hasta) std::swap(desde, hasta);
    const bool todas = desde <= 0;
    const QString fecha = fechaTrabajo(ctx_);
    try {
        Db& db = ctx_.servidor();
        const long long pista = pistaDelGrupo();
        QVector<long long> lista;
        if (todas) {
            for (const CarreraDia& c : carreras()) lista << c.carrera;
        } else {
            for (long long c = desde; c <= hasta; ++c) lista << c;
        }
        // With the confirmation rule on, the last race the summary covers must have its result.
        if (Row::toInteger(db.scalar("SELECT rpt_taquillaconfirmar FROM configuracion")) == 1) {
            long long ultima = hasta;
            if (todas)
                ultima = Row::toInteger(
                    db.scalar("SELECT max(carrera) FROM ma_principal WHERE fecha = ? AND ch = ?", {fecha, ctx_.session.ch}));
            if (ultima > 0 &&
                db.query("SELECT *  FROM carreras  where carrera =? and fecha  = ? and dividendo > 0  ", {ultima, fecha})
                    .empty()) {
                refusal(QStringLiteral("IMPRESION DE RESUME DE VENTAS"),
                        QStringLiteral("No se puede imprimir el resumen de ventas hasta que se confirme la carrera"));
                return false;
            }
        }
        DatosResumen r;
        r.centro = ctx_.session.ch;
        r.taquilla = ctx_.session.usuario;
        r.fecha = fecha;
        r.hora = horaTexto(ctx_.clock.now().time());
        r.carreras = todas ? QStringLiteral("TODAS")
                           : QStringLiteral("DE LA %1 HASTA LA %2").arg(desde).arg(hasta);
        r.totales = Cuadrar(todas ? 0 : desde, todas ? 0 : hasta);
        r.enDolares = enDolares();
        for (long long carrera : lista) {
            const Recordset rs = db.query("SELECT *  FROM carreras  where carrera =? and fecha  = ? and dividendo > 0  ",
                                          {carrera, fecha});
            if (rs.empty()) continue;
            Row fila = rs.first();
            for (const Row& x : rs)
                if (x.integer("id_hipodromo") == pista) {
                    fila = x;
                    break;
                }
            GanadorCarrera gan{carrera, fila.integer("win_ganadores"), fila.number("dividendo"),
                               fila.integer("win_ganadores2"), fila.number("dividendo2")};
            // The dividend the booth pays is its group's: read it off a winning ticket of the group.
            auto dividendoGrupo = [&](long long caballo, double oficial) {
                for (const Row& t : db.query("SELECT *  FROM ma_principal  where carrera =? and cobrado>0  and "
                                             "caballo=? and grupo=? and fecha = ? and (estatus=1 or estatus=2)",
                                             {carrera, caballo, ctx_.session.grupo, fecha}))
                    if (t.number("ganadores") > 0) return t.number("cobrado") / t.number("ganadores");
                return oficial;
            };
            gan.dividendo = dividendoGrupo(gan.caballo, gan.dividendo);
            if (gan.empate > 0) gan.dividendo2 = dividendoGrupo(gan.empate, gan.dividendo2);
            r.ganadores << gan;
        }
        return imprimir(resumenVentas(r, grafico()));
    } catch (const DbError& e) {
        refusal(QStringLiteral("IMPRESION DE RESUME DE VENTAS"), e.text());
        return false;
    }
}

}  // namespace hipico
