#include "core/RegistroErrores.h"

#include "core/Context.h"
#include "core/Db.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTextStream>

namespace hipico {

QString archivoRegistro(const Context& ctx) {
    const QString forzado = qEnvironmentVariable("HIPICO_LOG");
    if (!forzado.isEmpty()) return forzado;
    QString carpeta = ctx.config.carpetaLocal;
    if (carpeta.isEmpty()) carpeta = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    if (carpeta.isEmpty()) carpeta = QDir::tempPath();
    QDir().mkpath(carpeta);
    return QDir(carpeta).filePath(QStringLiteral("hipico-errores.log"));
}

void registrarError(const Context& ctx, const QString& ventana, const QString& detalle) {
    QFile f(archivoRegistro(ctx));
    if (!f.open(QIODevice::Append | QIODevice::Text)) return;
    QTextStream out(&f);
    out << ctx.clock.now().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) << " | "
        << (ctx.session.usuario.isEmpty() ? QStringLiteral("-") : ctx.session.usuario) << " | " << ventana << " | "
        << QString(detalle).replace(QLatin1Char('\n'), QLatin1Char(' ')) << "\n";
}

void registrarError(const Context& ctx, const QString& ventana, const DbError& e) {
    QString detalle = e.text();
    if (!e.sqlState().empty() || e.nativeCode() != 0)
        detalle += QStringLiteral(" (SQLSTATE %1, %2)").arg(QString::fromStdString(e.sqlState())).arg(e.nativeCode());
    registrarError(ctx, ventana, detalle);
}

}  // namespace hipico
