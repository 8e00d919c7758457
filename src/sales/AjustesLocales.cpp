#include "sales/AjustesLocales.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/RegistroErrores.h"
#include "core/Version.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace hipico {

namespace {

const QString kGanadores = QStringLiteral("GANADORES");
const QString kBolivares = QStringLiteral("BOLIVARES");
// Where the fallbacks to this machine's file are logged from.
const QString kVentanaAjustes = QStringLiteral("conf_local");
// The server's answer when the named schema does not exist.
constexpr long kBaseDesconocida = 1049;

}  // namespace

QString archivoAjustesMaquina(const Config& config) {
    QString carpeta = config.carpetaLocal;
    if (carpeta.isEmpty()) carpeta = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(carpeta);
    return QDir(carpeta).filePath(QStringLiteral("taquilla.ini"));
}

UnidadVenta leerUnidadVenta(const Config& config) {
    QSettings ini(archivoAjustesMaquina(config), QSettings::IniFormat);
    return ini.value(QStringLiteral("venta/unidad"), kGanadores).toString() == kBolivares ? UnidadVenta::Bolivares
                                                                                          : UnidadVenta::Ganadores;
}

void guardarUnidadVenta(const Config& config, UnidadVenta unidad) {
    QSettings ini(archivoAjustesMaquina(config), QSettings::IniFormat);
    ini.setValue(QStringLiteral("venta/unidad"), unidad == UnidadVenta::Bolivares ? kBolivares : kGanadores);
    ini.sync();
}

std::shared_ptr<Db> conexionLocalDisponible(Context& ctx) {
    if (ctx.cnLocal) return ctx.cnLocal;
    try {
        return Db::open(cadenaLocal(ctx.config));
    } catch (const DbError& e) {
        // A machine without a local schema (every booth) works without it;
        // any other failure goes to the log.
        if (e.nativeCode() != kBaseDesconocida) registrarError(ctx, kVentanaAjustes, e);
        return nullptr;
    }
}

ConfLocal leerConfImpresion(Context& ctx) {
    if (auto local = conexionLocalDisponible(ctx)) {
        try {
            const Recordset rs = local->query("select * from conf_local order by id limit 1");
            if (!rs.empty()) {
                Session s;
                cargarConfLocal(s, rs.first());
                return s.confLocal;
            }
        } catch (const DbError& e) {
            // A local schema without its settings table: this machine's file holds them.
            registrarError(ctx, kVentanaAjustes, e);
        }
    }
    ConfLocal c;
    QSettings ini(archivoAjustesMaquina(ctx.config), QSettings::IniFormat);
    ini.beginGroup(QStringLiteral("impresion"));
    c.impresion = ini.value(QStringLiteral("impresion"), c.impresion).toInt();
    c.puerto = ini.value(QStringLiteral("puerto"), c.puerto).toString();
    c.tamletra = ini.value(QStringLiteral("tamletra"), c.tamletra).toInt();
    c.codbarras = ini.value(QStringLiteral("codbarras"), c.codbarras).toInt();
    ini.endGroup();
    return c;
}

void cargarImpresion(Context& ctx) { ctx.session.confLocal = leerConfImpresion(ctx); }

bool guardarConfImpresion(Context& ctx, const ConfLocal& c) {
    QSettings ini(archivoAjustesMaquina(ctx.config), QSettings::IniFormat);
    ini.beginGroup(QStringLiteral("impresion"));
    ini.setValue(QStringLiteral("impresion"), c.impresion);
    ini.setValue(QStringLiteral("puerto"), c.puerto);
    ini.setValue(QStringLiteral("tamletra"), c.tamletra);
    ini.setValue(QStringLiteral("codbarras"), c.codbarras);
    ini.endGroup();
    ini.sync();

    auto local = conexionLocalDisponible(ctx);
    if (!local) return false;
    local->inTransaction([&] {
        if (local->query("select id from conf_local where id=1 FOR UPDATE").empty())
            local->exec("INSERT INTO `conf_local` (`id`,`impresion`,`puerto`,`ip_secundaria`,`version`,`tamletra`,"
                        "`grupo`,`ip`,`server`,`codbarras`) VALUES (1,?,?,?,?,?,'','','',?);",
                        {c.impresion, c.puerto, ctx.config.ipSecundaria, kVersionNumero, c.tamletra, c.codbarras});
        else
            local->exec("update conf_local set impresion=?,puerto=?,tamletra=?,codbarras=? where id=1 limit 1",
                        {c.impresion, c.puerto, c.tamletra, c.codbarras});
    });
    return true;
}

}  // namespace hipico
