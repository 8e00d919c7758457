#include "admin/BoletosEscritorio.h"

#include "admin/ProcesoMacuare.h"

#include "core/Context.h"
#include "core/Diario.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "reportes/Llenados.h"
#include "sales/JuegoGanadores.h"
#include "sales/JuegoTablaFija.h"
#include "sales/TicketKeys.h"
#include "schema/Escritores.h"

#include <QMap>

namespace hipico {

namespace {

// The titles of the tab's messages.
const QString kTituloAdmin = QStringLiteral("ADMINISTRACION DEL SISTEMA");
const QString kTituloAuditoria = QStringLiteral("Auditoria del Sistema");

// The local currency in the audit snapshot.
constexpr int kMonedaLocal = 0;

// A game's tickets in the audit snapshot: the game's number there, and what
// its `monto` and `tablas` keep of a ticket `m`.
struct AuditoriaJuego {
    int id;
    const char* monto;
    const char* tablas;
};
AuditoriaJuego auditoriaDe(const Juego& j) {
    if (&j == &juegoTablaFija()) return {2, "m.monto", "m.tablas"};
    return {1, "m.ganadores", "0"};
}

// The desk's void: a paid ticket stays; a ticket of a processed race goes
// only with an administrator's code, recorded as voided by the administrator.
PuntoAnulacion puntoEscritorio() {
    PuntoAnulacion p;
    p.ventana = kVentanaEscritorio;
    p.titulo = texto::TituloAdministracionSistema;
    p.tituloMotivo = texto::TituloMotivoAnulacion;
    p.noEncontrado = texto::BoletoNoAnulableSinCodigo;
    p.nuncaLiquidados = true;
    return p;
}

}  // namespace

bool BoletosEscritorio::anularPorNumero(long long numero, const Alcance& alcance) {
    PuntoAnulacion p = puntoEscritorio();
    p.pideCodigo = false;
    p.dentro = dentroDe(alcance);
    // The void by number names one code of its own.
    p.codigosAdmin = {QStringLiteral("QWPLR850264")};
    return anularBoleto(ctx_, juego_, p, numero) == ResultadoAnulacion::Anulado;
}

bool BoletosEscritorio::anularPorCodigo() {
    PuntoAnulacion p = puntoEscritorio();
    p.avisaSinMotivo = true;
    // Either administrator's code voids a ticket of a processed race by its code.
    p.codigosAdmin = codigosAdministrador();
    // The administrator sees whose ticket it is before it goes.
    p.confirmar = [this, &p](Db& d, const Row& b) {
        const Recordset g = d.query("SELECT ch FROM grupos WHERE grupo = ?", {b.text("grupo")});
        if (g.empty()) {
            ctx_.dialogs.refuse(p.titulo, p.noEncontrado);
            return false;
        }
        const QString texto = QStringLiteral("BOLETO PERTENECE AL HIPICO : ") + g.first().text("ch") + "\n" +
                              QStringLiteral("POR UN MONTO DE  ") +
                              (b.has("tablas") ? textoNumero(b.number("tablas")) + QStringLiteral("  TABLAS")
                                               : textoNumero(b.number("ganadores")) + QStringLiteral("  GANADORES")) +
                              "\n" + QStringLiteral("AL CABALLO: ") +
                              b.text("caballo") + "\n" + QStringLiteral("EN LA CARRERA N#: ") + b.text("carrera");
        if (ctx_.dialogs.confirm(texto::TituloCodigoBoleto, texto)) return true;
        ctx_.dialogs.inform(p.titulo, QStringLiteral("EL BOLETO NO SE ANULO"));
        return false;
    };
    return anularBoleto(ctx_, juego_, p) == ResultadoAnulacion::Anulado;
}

bool BoletosEscritorio::anularGerencia(const Alcance& alcance, bool pedirMotivo) {
    PuntoAnulacion p = puntoEscritorio();
    p.textoCodigo = QStringLiteral("INGRESE EL CODIGO DEL BOLETO DE GANADORES");
    p.pideMotivo = pedirMotivo;
    p.noEncontrado = texto::BoletoNoAnulable;
    p.noSiVentaCerrada = true;
    p.dentro = dentroDe(alcance);
    return anularBoleto(ctx_, juegoGanadores(), p) == ResultadoAnulacion::Anulado;
}

bool BoletosEscritorio::cambiarBoleto(long long numero, const QString& motivoInicial, const QString& exito,
                                      const std::function<QString(const Row&, const QString&)>& cambio) {
    if (numero <= 0) {
        ctx_.dialogs.refuse(kTituloAdmin, texto::VerifiqueNumeroBoleto);
        return false;
    }
    return guardado([&] {
        const auto motivo = ctx_.dialogs.ask(QStringLiteral("MOTIVO DEL CAMBIO"), texto::IngreseMotivo, motivoInicial);
        if (!motivo || motivo->trimmed().isEmpty() || !motivoCabe(ctx_, motivo->trimmed())) return false;
        Db& d = db();
        const QString negado = d.inTransaction([&] {
            const auto b = bloquearBoleto(d, juego_, numero);
            return b ? cambio(*b, motivo->trimmed()) : texto::VerifiqueNumeroBoleto;
        });
        if (!negado.isEmpty()) {
            ctx_.dialogs.refuse(kTituloAdmin, negado);
            return false;
        }
        ctx_.dialogs.inform(kTituloAdmin, exito);
        return true;
    });
}

bool BoletosEscritorio::pagar(long long numero) {
    return cambiarBoleto(numero, QStringLiteral("COBRADO"), QStringLiteral("BOLETO COBRADO CON EXITO"),
                         [&](const Row& b, const QString& motivo) {
                             const Estatus e = estatusDe(b);
                             if (e == Estatus::Vendido) return texto::BoletoNoGanador;
                             if (liquidado(e)) return texto::BoletoYaPagado;
                             // A refund becomes a paid refund, anything else a paid winner; the
                             // payment date is the sale date.
                             const Estatus pagado =
                                 e == Estatus::Devolucion ? Estatus::DevolucionPagada : Estatus::Pagado;
                             insertar(db(), juego_.anotacion(b, motivo, ctx_.session.usuario, pagado));
                             db().exec(std::string("update ") + juego_.tabla +
                                           " set estatus=?,fecha_cobro=fecha Where  numero = ? limit 1 ",
                                       {numeroDe(pagado), numero});
                             anotar(db(), asiento(operacion::Pago, juego_, b, b.number("cobrado")));
                             return QString();
                         });
}

bool BoletosEscritorio::devolver(long long numero) {
    return cambiarBoleto(numero, QStringLiteral("DEVUELTO"), texto::BoletoModificado,
                         [&](const Row& b, const QString& motivo) {
                             if (liquidado(estatusDe(b))) return texto::BoletoYaPagado;
                             insertar(db(), juego_.anotacion(b, motivo, ctx_.session.usuario,
                                                              Estatus::Devolucion));
                             db().exec(std::string("update ") + juego_.tabla +
                                           " set estatus=4,cobrado=? Where  numero = ? limit 1 ",
                                       {juego_.devolucion(db(), b), numero});
                             // The journal keeps the winner game's amounts due.
                             if (std::string_view(juego_.tabla) == "ma_principal")
                                 anotarPremios(db(), b.text("fecha"), b.integer("carrera"), b.text("grupo"));
                             return QString();
                         });
}

bool BoletosEscritorio::renumerar(long long numero) {
    return guardado([&] {
        const std::string tabla = juego_.tabla, columna = juego_.codigo;
        const Recordset actual =
            db().query("SELECT " + columna + " AS codigo FROM " + tabla + " Where numero = ?", {numero});
        if (actual.empty()) {
            ctx_.dialogs.refuse(kTituloAdmin, texto::VerifiqueNumeroBoleto);
            return false;
        }
        const auto codigo = ctx_.dialogs.ask(kTituloAdmin, QStringLiteral("INGRESE EL NUEVO CODIGO DEL BOLETO"),
                                             actual.first().text("codigo"));
        if (!codigo) return false;
        const QString c = codigo->trimmed();
        bool valido = !c.isEmpty() && c.size() <= 25;
        for (const QChar ch : c) valido = valido && ch.unicode() < 128 && ch.isLetterOrNumber();
        if (!valido) {
            ctx_.dialogs.refuse(kTituloAdmin, QStringLiteral("DEBE INGRESAR UN CODIGO VALIDO"));
            return false;
        }
        Db& d = db();
        const QString negado = d.inTransaction([&] {
            // The ticket's row first, as every change of a ticket takes it; then the new code.
            const auto b = bloquearBoleto(d, juego_, numero);
            if (!b) return texto::VerifiqueNumeroBoleto;
            if (Row::toInteger(d.scalar("SELECT count(*) FROM " + tabla + " Where " + columna +
                                            " = ? and numero <> ? FOR UPDATE",
                                        {c, numero})) > 0)
                return QStringLiteral("EL CODIGO YA PERTENECE A OTRO BOLETO");
            d.exec("update " + tabla + " set " + columna + "= ? Where   numero = ? limit 1   ", {c, numero});
            anotar(d, {operacion::Renumeracion, QString::fromLatin1(juego_.tabla), c, b->text("grupo"),
                       b->text("fecha"), b->integer("carrera"), 0, 0});
            return QString();
        });
        if (!negado.isEmpty()) {
            ctx_.dialogs.refuse(kTituloAdmin, negado);
            return false;
        }
        ctx_.dialogs.inform(kTituloAdmin, texto::BoletoModificado);
        return true;
    });
}

bool BoletosEscritorio::anularMacuare(const Alcance& alcance) { return ProcesoMacuare(ctx_).anularBoleto(alcance); }

// ---------------------------------------------------------------- audit

std::optional<BoletosEscritorio::Auditoria> BoletosEscritorio::auditoria(const Seleccion& s) {
    std::optional<Auditoria> out;
    const AuditoriaJuego g = auditoriaDe(juego_);
    const std::string tabla = juego_.tabla;
    guardado([&] {
        Auditoria a;
        Db& d = db();
        d.inTransaction([&] {
            a.enAuditoria = Row::toInteger(d.scalar(
                "SELECT count(carrera) as cantidad FROM ventas_auditoria where carrera = ? and id_juego = ?",
                {s.carrera, g.id}));
            a.enVentas = Row::toInteger(
                d.scalar("SELECT count(carrera) as cantidad FROM " + tabla + " where carrera = ? and fecha = ?",
                         {s.carrera, s.fecha}));
            if (a.enAuditoria == 0) {
                // The snapshot: one row per ticket of the race, in the local currency.
                a.enAuditoria = insertarDesde(d, auditoriaBoletos(g.id, kMonedaLocal, g.monto, g.tablas),
                                              "FROM " + tabla + " m where m.carrera = ? and m.fecha = ?",
                                              {s.carrera, s.fecha});
                a.tomada = true;
            }
            a.alterados = d.query("SELECT * FROM ventas_auditoria v WHERE not exists (select * from " + tabla +
                                      " m where m.carrera=v.carrera and m.caballo=v.caballo and " + g.monto +
                                      "=v.monto and " + g.tablas +
                                      "=v.tablas and 0=v.puesto and m.grupo=v.grupo and m.ch=v.taquilla and "
                                      "?=v.id_juego and ?=v.id_moneda and m.fecha = ?) and v.carrera= ? and "
                                      "v.id_juego = ?;",
                                  {g.id, kMonedaLocal, s.fecha, s.carrera, g.id});
            // An altered ticket loses any prize not yet paid.
            for (const Row& v : a.alterados)
                d.exec("update " + tabla +
                           " set estatus=0,cobrado=0 where carrera = ? and fecha  = ?  and "
                           "nu_boleto= ? and estatus <> 2 and estatus <> 3 ",
                       {s.carrera, s.fecha, v.text("nu_boleto")});
        });
        if (!a.alterados.empty())
            ctx_.dialogs.warn(kTituloAuditoria, QStringLiteral("Boletos Alterados Encontrados"));
        else if (a.tomada)
            ctx_.dialogs.inform(kTituloAuditoria,
                                QStringLiteral("AUDITORIA DE LA CARRERA GUARDADA: %1 BOLETOS").arg(a.enAuditoria));
        else
            ctx_.dialogs.inform(kTituloAuditoria, QStringLiteral("NO SE ENCONTRARON BOLETOS ALTERADOS"));
        out = a;
    });
    return out;
}

bool BoletosEscritorio::borrarAuditoria(const Seleccion& s) {
    return guardado([&] {
        if (!ctx_.dialogs.confirm(kTituloAuditoria, QStringLiteral("Desea borrar la auditoria de la carrera"), true))
            return false;
        db().exec("delete from ventas_auditoria where carrera = ? and id_juego = ?", {s.carrera, auditoriaDe(juego_).id});
        ctx_.dialogs.inform(kTituloAuditoria, texto::CambiosRealizados);
        return true;
    });
}

// ---------------------------------------------------------------- ticket search

const BoletosEscritorio::ConsultaBoletos& BoletosEscritorio::consultaEscritorio() {
    static const ConsultaBoletos c{false,
                                   false,
                                   {"PAGADOS", "POR PAGAR", "RET. POR PAGAR", "RET. PAGADOS", "NO GANADORES", "TODAS"},
                                   {2, 1, 4, 3, 0, -1},
                                   {2, 3},
                                   {1, 4}};
    return c;
}

const BoletosEscritorio::ConsultaBoletos& BoletosEscritorio::consultaGerencia() {
    static const ConsultaBoletos c{true,
                                   true,
                                   {"POR PAGAR", "PAGADOS", "RET PAGADO", "RET POR PAGAR", "NO GANADORES", "TODAS"},
                                   {1, 2, 3, 4, 0, -1},
                                   {2},
                                   {1}};
    return c;
}

const QStringList& BoletosEscritorio::clasesEstatus() { return consultaEscritorio().clases; }

QString BoletosEscritorio::nombreEstatus(const Row& boleto) {
    static const QStringList estados{"NO GANADOR", "POR PAGAR", "PAGADO", "RET. PAGADO", "RET. POR PAGAR"};
    return estados.value(int(boleto.integer("estatus")), boleto.text("estatus"));
}

std::optional<BoletosEscritorio::Busqueda> BoletosEscritorio::buscar(const Seleccion& s, const QString& clase,
                                                                     const QString& caballo, bool historico,
                                                                     const ConsultaBoletos& consulta,
                                                                     long long hasta) {
    std::optional<Busqueda> out;
    guardado([&] {
        // The game's tickets of the day, or its kept copy, with what each bought.
        std::string sql = "SELECT v.numero,v.nu_boleto,v.hora,v.carrera,v.caballo,";
        for (const QString& c : juego_.compra) sql += "v." + c.toStdString() + ",";
        sql += std::string(consulta.dolares ? "v.ganadores*c.valor_ganador AS dolares," : "") +
               "v.cobrado,v.estatus,v.ch,v.grupo FROM " + (historico ? juego_.copia : juego_.tabla) + " v" +
               (consulta.dolares ? ", configuracion c" : "") + " where v.fecha = ?";
        Params params{s.fecha};
        if (consulta.rango) {
            sql += " and v.carrera  between  ? and ?";
            params.push_back(s.carrera);
            params.push_back(std::max(hasta, s.carrera));
        } else {
            sql += " and v.carrera = ?";
            params.push_back(s.carrera);
        }
        if (s.centroElegido()) {
            sql += " and v.ch = ?";
            params.push_back(s.centro);
        }
        if (s.grupoElegido()) {
            sql += " and v.grupo = ?";
            params.push_back(s.grupo);
        }
        sql += terminoAlcance(s.alcance, "v.grupo", params);
        if (!caballo.trimmed().isEmpty()) {
            const auto n = leerEntero(caballo);
            if (!n || *n <= 0) {
                ctx_.dialogs.refuse(texto::TituloBusqueda, texto::CaballoNoValido);
                return;
            }
            sql += " and v.caballo = ?";
            params.push_back(*n);
        }
        const int estatus = consulta.estatusClase.value(consulta.clases.indexOf(clase), -1);
        if (estatus >= 0) {
            sql += " and v.estatus = ?";
            params.push_back(estatus);
        }
        sql += " order by v.numero desc";
        Busqueda b;
        b.filas = db().query(sql, params);
        if (b.filas.empty()) {
            ctx_.dialogs.inform(texto::TituloBusqueda, texto::SinRegistros);
            return;
        }
        const QString unidades = juego_.compra.first();
        const bool conMonto = juego_.compra.contains(QStringLiteral("monto"));
        for (const Row& r : b.filas) {
            b.sumaganadores += r.number(unidades);
            if (conMonto) b.sumamonto += r.number("monto");
            if (consulta.dolares) b.sumadolares += r.number("dolares");
            const int e = int(r.integer("estatus"));
            if (consulta.pagados.contains(e)) b.sumacobrado += r.number("cobrado");
            if (consulta.porPagar.contains(e)) b.sumaporcobrar += r.number("cobrado");
        }
        // Winner units are money at the unit price.
        if (!conMonto) b.sumamonto = b.sumaganadores * valorGanador();
        out = std::move(b);
    });
    return out;
}

std::optional<ParametrosReporte> BoletosEscritorio::reporteBusqueda(const Seleccion& s, const QString& clase,
                                                                    const QString& caballo, bool historico,
                                                                    const ConsultaBoletos& consulta, long long hasta) {
    const auto b = buscar(s, clase, caballo, historico, consulta, hasta);
    if (!b) return std::nullopt;
    std::optional<ParametrosReporte> p;
    guardado([&] {
        reescribir(ctx_.local(), "rpt_jugadas", filasJugadas(b->filas, s.fecha, valorGanador()));
        p = ParametrosReporte{QStringLiteral("%1 - CENTRO %2 - GRUPO %3").arg(clase, s.centro, s.grupo),
                              static_cast<qint32>(s.carrera)};
    });
    return p;
}

}  // namespace hipico
