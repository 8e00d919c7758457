// Single-ticket commands of the winners administration, the audit and the
// ticket search.
#include "admin/AdminGanadores.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "sales/TicketKeys.h"
#include "sales/TicketRules.h"

namespace hipico {

namespace {

const QString kTituloAdmin = QStringLiteral("ADMINISTRACION DEL SISTEMA");
const QString kTituloAnulacion = QStringLiteral("Administración del Sistema");
const QString kTituloMotivo = QStringLiteral("MOTIVO DE LA ANULACIÓN DEL BOLETO ");
const QString kTituloCambio = QStringLiteral("MOTIVO DEL CAMBIO");
const QString kTituloAuditoria = QStringLiteral("Auditoria del Sistema");
const QString kTituloMacuares = QStringLiteral("ANULACION DE MACUARES");
const QString kNoEncontrado = QStringLiteral("EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO");
const QString kNoAnulable = QStringLiteral("EL BOLETO NO SE PUEDE ANULAR");
const QString kProcesada = QStringLiteral("EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA");
const QString kMotivoAdmin = QStringLiteral("ELIMINADO POR EL ADMIN");

// The codes with which the administrator voids a ticket of a processed race.
bool esCodigoAdmin(const QString& motivo) {
    return motivo == QLatin1String("QWPLR850264") || motivo == QLatin1String("KTR384");
}

bool pagado(const Row& b) { return b.integer("estatus") == 2 || b.integer("estatus") == 3; }

// The winner game in the audit snapshot, and its currency.
constexpr int kJuegoGanadores = 1;
constexpr int kMonedaLocal = 0;

}  // namespace

std::optional<Row> AdminGanadores::boleto(long long numero) {
    const Recordset rs = db().query("SELECT * FROM ma_principal Where numero= ? FOR UPDATE", {numero});
    if (rs.empty()) return std::nullopt;
    return rs.first();
}

void AdminGanadores::bitacora(const Row& b, const QString& motivo, int estatus) {
    escribirBitacora(db(), b, motivo, ctx_.session.usuario, estatus);
}

// The void itself, under the ticket's lock: a paid ticket is never voided, and
// a ticket of a processed race only with the administrator's code.
bool AdminGanadores::anular(long long numero, const QString& motivo) {
    const bool forzado = esCodigoAdmin(motivo);
    enum class Fin { Anulado, NoEncontrado, Pagado, Procesada };
    Db& d = db();
    const Fin fin = d.inTransaction([&] {
        const auto b = boleto(numero);
        if (!b) return Fin::NoEncontrado;
        if (pagado(*b)) return Fin::Pagado;
        if (!forzado && carreraProcesada(d, b->text("fecha"), b->integer("carrera"))) return Fin::Procesada;
        escribirAnulacion(d, *b, forzado ? kMotivoAdmin : motivo, ctx_.session.usuario);
        return Fin::Anulado;
    });
    switch (fin) {
    case Fin::NoEncontrado: ctx_.dialogs.refuse(kTituloAnulacion, kNoEncontrado); return false;
    case Fin::Pagado: ctx_.dialogs.refuse(kTituloAnulacion, kNoAnulable); return false;
    case Fin::Procesada: ctx_.dialogs.refuse(kTituloAnulacion, kProcesada); return false;
    case Fin::Anulado: break;
    }
    ctx_.dialogs.inform(kTituloAnulacion, QStringLiteral("BOLETO ANULADO CON EXITO"));
    return true;
}

bool AdminGanadores::anularPorNumero(long long numero) {
    if (numero <= 0) {
        ctx_.dialogs.refuse(kTituloAnulacion, kNoEncontrado);
        return false;
    }
    return seguro(kTituloAnulacion, [&] {
        const auto motivo = ctx_.dialogs.ask(kTituloMotivo, QStringLiteral("INGRESE EL MOTIVO"),
                                             QStringLiteral("ANULADO"));
        if (!motivo || motivo->trimmed().isEmpty()) return false;
        return anular(numero, motivo->trimmed());
    });
}

bool AdminGanadores::anularPorCodigo() {
    return seguro(kTituloAnulacion, [&] {
        const auto codigo = ctx_.dialogs.ask(QStringLiteral("CODIGO DEL BOLETO"),
                                             QStringLiteral("INGRESE EL CODIGO DEL BOLETO"));
        if (!codigo || codigo->trimmed().isEmpty()) return false;
        const auto motivo = ctx_.dialogs.ask(kTituloMotivo, QStringLiteral("INGRESE EL MOTIVO"),
                                             QStringLiteral("ANULADO"));
        if (!motivo || motivo->trimmed().isEmpty()) {
            ctx_.dialogs.refuse(QStringLiteral("Verificación del Sistema"),
                                QStringLiteral("No se puede realizar la operación sin un motivo"));
            return false;
        }
        const Recordset rs = db().query(
            "SELECT m.numero,m.carrera,m.caballo,m.ganadores,m.ch,m.grupo,m.hora,m.fecha,m.estatus,m.nu_boleto,"
            "m.cobrado,m.fecha_cobro,g.ch as hipico FROM ma_principal m, grupos g Where nu_boleto= ? and "
            "g.grupo=m.grupo",
            {codigo->trimmed()});
        if (rs.empty()) {
            ctx_.dialogs.refuse(kTituloAnulacion, kNoEncontrado);
            return false;
        }
        const Row& b = rs.first();
        const QString texto = QStringLiteral("BOLETO PERTENECE AL HIPICO : ") + b.text("hipico") + "\n" +
                              QStringLiteral("POR UN MONTO DE  ") + textoNumero(b.number("ganadores")) +
                              QStringLiteral("  GANADORES") + "\n" + QStringLiteral("AL CABALLO: ") +
                              b.text("caballo") + "\n" + QStringLiteral("EN LA CARRERA N#: ") + b.text("carrera");
        if (!ctx_.dialogs.confirm(QStringLiteral("CODIGO DEL BOLETO"), texto)) {
            ctx_.dialogs.inform(kTituloAnulacion, QStringLiteral("EL BOLETO NO SE ANULO"));
            return false;
        }
        return anular(b.integer("numero"), motivo->trimmed());
    });
}

bool AdminGanadores::cambiarBoleto(long long numero, const QString& motivoInicial, const QString& exito,
                                   const std::function<QString(const Row&, const QString&)>& cambio) {
    const QString noEncontrado = QStringLiteral("VERIFIQUE EL NUMERO DEL BOLETO");
    if (numero <= 0) {
        ctx_.dialogs.refuse(kTituloAdmin, noEncontrado);
        return false;
    }
    return seguro(kTituloAdmin, [&] {
        const auto motivo = ctx_.dialogs.ask(kTituloCambio, QStringLiteral("INGRESE EL MOTIVO"), motivoInicial);
        if (!motivo || motivo->trimmed().isEmpty()) return false;
        Db& d = db();
        const QString negado = d.inTransaction([&] {
            const auto b = boleto(numero);
            return b ? cambio(*b, motivo->trimmed()) : noEncontrado;
        });
        if (!negado.isEmpty()) {
            ctx_.dialogs.refuse(kTituloAdmin, negado);
            return false;
        }
        ctx_.dialogs.inform(kTituloAdmin, exito);
        return true;
    });
}

bool AdminGanadores::pagarBoleto(long long numero) {
    return cambiarBoleto(numero, QStringLiteral("COBRADO"), QStringLiteral("BOLETO COBRADO CON EXITO"),
                         [&](const Row& b, const QString& motivo) {
                             if (b.integer("estatus") == 0) return QStringLiteral("BOLETO NO GANADOR");
                             if (pagado(b)) return QStringLiteral("BOLETO YA PAGADO");
                             // The payment date is the sale date.
                             if (b.integer("estatus") == 4) {
                                 bitacora(b, motivo, 3);
                                 db().exec("update ma_principal set estatus=3,fecha_cobro=fecha Where  numero = ? "
                                           "limit 1 ",
                                           {numero});
                             } else {
                                 bitacora(b, motivo, 2);
                                 db().exec("update ma_principal set estatus=2,fecha_cobro=fecha Where  numero = ? "
                                           "limit 1 ",
                                           {numero});
                             }
                             return QString();
                         });
}

bool AdminGanadores::devolverBoleto(long long numero) {
    return cambiarBoleto(numero, QStringLiteral("DEVUELTO"), QStringLiteral("BOLETO MODIFICADO CON EXITO"),
                         [&](const Row& b, const QString& motivo) {
                             if (pagado(b)) return QStringLiteral("BOLETO YA PAGADO");
                             bitacora(b, motivo, 4);
                             db().exec("update ma_principal set estatus=4,cobrado=ganadores* ? Where  numero = ? "
                                       "limit 1 ",
                                       {valorGanador(), numero});
                             return QString();
                         });
}

bool AdminGanadores::renumerarBoleto(long long numero) {
    return seguro(kTituloAdmin, [&] {
        const Recordset actual = db().query("SELECT nu_boleto FROM ma_principal Where numero = ?", {numero});
        if (actual.empty()) {
            ctx_.dialogs.refuse(kTituloAdmin, QStringLiteral("VERIFIQUE EL NUMERO DEL BOLETO"));
            return false;
        }
        const auto codigo = ctx_.dialogs.ask(kTituloAdmin, QStringLiteral("INGRESE EL NUEVO CODIGO DEL BOLETO"),
                                             actual.first().text("nu_boleto"));
        if (!codigo) return false;
        const QString c = codigo->trimmed();
        bool valido = !c.isEmpty() && c.size() <= 25;
        for (const QChar ch : c) valido = valido && ch.unicode() < 128 && ch.isLetterOrNumber();
        if (!valido) {
            ctx_.dialogs.refuse(kTituloAdmin, QStringLiteral("DEBE INGRESAR UN CODIGO VALIDO"));
            return false;
        }
        Db& d = db();
        const bool libre = d.inTransaction([&] {
            if (Row::toInteger(d.scalar("SELECT count(*) FROM ma_principal Where nu_boleto = ? and numero <> ? "
                                        "FOR UPDATE",
                                        {c, numero})) > 0)
                return false;
            d.exec("update ma_principal set nu_boleto= ? Where   numero = ? limit 1   ", {c, numero});
            return true;
        });
        if (!libre) {
            ctx_.dialogs.refuse(kTituloAdmin, QStringLiteral("EL CODIGO YA PERTENECE A OTRO BOLETO"));
            return false;
        }
        ctx_.dialogs.inform(kTituloAdmin, QStringLiteral("BOLETO MODIFICADO CON EXITO"));
        return true;
    });
}

bool AdminGanadores::anularMacuare() {
    return seguro(kTituloMacuares, [&] {
        const auto codigo =
            ctx_.dialogs.ask(kTituloMacuares, QStringLiteral("INGRESE EL CODIGO DEL BOLETO DEL MACUARE"));
        if (!codigo || codigo->trimmed().isEmpty()) return false;
        Db& d = db();
        QString negado;
        d.inTransaction([&] {
            const Recordset rs = d.query("SELECT * FROM macuares Where boleto= ? FOR UPDATE", {codigo->trimmed()});
            if (rs.empty() || rs.first().integer("estatus") != 0) {
                negado = kNoAnulable;
                return;
            }
            // Once the combination's sale is closed its tickets stay.
            if (Row::toInteger(d.scalar("SELECT venta_macuare FROM configuracion")) == 0) {
                negado = QStringLiteral("LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS");
                return;
            }
            d.exec("delete from  macuares  Where boleto = ? limit 1", {codigo->trimmed()});
        });
        if (!negado.isEmpty()) {
            ctx_.dialogs.refuse(kTituloMacuares, negado);
            return false;
        }
        ctx_.dialogs.inform(kTituloMacuares, QStringLiteral("BOLETO ANULADO CON EXITO"));
        return true;
    });
}

// ---------------------------------------------------------------- audit

std::optional<AdminGanadores::Auditoria> AdminGanadores::auditoria() {
    std::optional<Auditoria> out;
    seguro(kTituloAuditoria, [&] {
        Auditoria a;
        Db& d = db();
        d.inTransaction([&] {
            a.enAuditoria = Row::toInteger(
                d.scalar("SELECT count(carrera) as cantidad FROM ventas_auditoria where carrera = ?", {carrera}));
            a.enVentas = Row::toInteger(d.scalar(
                "SELECT count(carrera) as cantidad FROM ma_principal where carrera = ? and fecha = ?",
                {carrera, fecha}));
            if (a.enAuditoria == 0) {
                // The snapshot: one row per ticket of the race, as the winner game in the local currency.
                a.enAuditoria = d.exec("INSERT INTO `ventas_auditoria` SELECT NULL,carrera,caballo,ganadores,ch,"
                                       "grupo,hora,estatus,nu_boleto,cobrado,fecha_cobro,?,?,0,0 FROM ma_principal "
                                       "where carrera = ? and fecha = ?",
                                       {kJuegoGanadores, kMonedaLocal, carrera, fecha});
                a.tomada = true;
            }
            a.alterados = d.query(
                "SELECT * FROM ventas_auditoria v WHERE not exists (select * from ma_principal m where "
                "m.carrera=v.carrera and m.caballo=v.caballo and m.ganadores=v.monto and 0=v.tablas and "
                "0=v.puesto and m.grupo=v.grupo and m.ch=v.taquilla and ?=v.id_juego and ?=v.id_moneda and "
                "m.fecha = ?) and v.carrera= ?;",
                {kJuegoGanadores, kMonedaLocal, fecha, carrera});
            // An altered ticket loses any prize not yet paid.
            for (const Row& v : a.alterados)
                d.exec("update ma_principal set estatus=0,cobrado=0 where carrera = ? and fecha  = ?  and "
                       "nu_boleto= ? and estatus <> 2 and estatus <> 3 ",
                       {carrera, fecha, v.text("nu_boleto")});
        });
        if (!a.alterados.empty())
            ctx_.dialogs.warn(kTituloAuditoria, QStringLiteral("Boletos Alterados Encontrados"));
        else if (a.tomada)
            ctx_.dialogs.inform(kTituloAuditoria,
                                QStringLiteral("AUDITORIA DE LA CARRERA GUARDADA: %1 BOLETOS").arg(a.enAuditoria));
        else
            ctx_.dialogs.inform(kTituloAuditoria, QStringLiteral("NO SE ENCONTRARON BOLETOS ALTERADOS"));
        out = a;
        return true;
    });
    return out;
}

bool AdminGanadores::borrarAuditoria() {
    return seguro(kTituloAuditoria, [&] {
        if (!ctx_.dialogs.confirm(kTituloAuditoria, QStringLiteral("Desea borrar la auditoria de la carrera"), true))
            return false;
        db().exec("delete from ventas_auditoria where carrera = ?", {carrera});
        ctx_.dialogs.inform(kTituloAuditoria, QStringLiteral("Los cambios se han realizado con exito"));
        return true;
    });
}

// ---------------------------------------------------------------- ticket search

const QStringList& AdminGanadores::clasesEstatus() {
    static const QStringList clases{"PAGADOS", "POR PAGAR", "RET. POR PAGAR", "RET. PAGADOS", "NO GANADORES",
                                    "TODAS"};
    return clases;
}

std::optional<AdminGanadores::Busqueda> AdminGanadores::buscarBoletos(const QString& clase, const QString& caballo,
                                                                      bool historico) {
    std::optional<Busqueda> out;
    seguro(QStringLiteral(" Busqueda "), [&] {
        std::string sql = std::string("SELECT numero,nu_boleto,hora,carrera,caballo,ganadores,cobrado,estatus,ch,"
                                      "grupo FROM ") +
                          (historico ? "ventas_ganadores" : "ma_principal") + " where fecha = ? and carrera = ?";
        Params params{fecha, carrera};
        if (!esTodos(centro)) {
            sql += " and ch = ?";
            params.push_back(centro);
        }
        if (grupoElegido()) {
            sql += " and grupo = ?";
            params.push_back(grupo);
        }
        if (!caballo.trimmed().isEmpty()) {
            bool ok = false;
            const long long n = caballo.trimmed().toLongLong(&ok);
            if (!ok || n <= 0) {
                ctx_.dialogs.refuse(QStringLiteral(" Busqueda "), QStringLiteral("EL NUMERO DE CABALLO NO ES VALIDO"));
                return false;
            }
            sql += " and caballo = ?";
            params.push_back(n);
        }
        static const QMap<QString, int> estatus{{"PAGADOS", 2},     {"POR PAGAR", 1},    {"RET. POR PAGAR", 4},
                                                {"RET. PAGADOS", 3}, {"NO GANADORES", 0}};
        if (estatus.contains(clase)) {
            sql += " and estatus = ?";
            params.push_back(estatus.value(clase));
        }
        sql += " order by numero desc";
        Busqueda b;
        b.filas = db().query(sql, params);
        if (b.filas.empty()) {
            ctx_.dialogs.inform(QStringLiteral(" Busqueda "), QStringLiteral("No se encontro Ningun registro"));
            return false;
        }
        for (const Row& r : b.filas) {
            b.sumaganadores += r.number("ganadores");
            const long long e = r.integer("estatus");
            if (e == 2 || e == 3) b.sumacobrado += r.number("cobrado");
            if (e == 1 || e == 4) b.sumaporcobrar += r.number("cobrado");
        }
        out = std::move(b);
        return true;
    });
    return out;
}

}  // namespace hipico
