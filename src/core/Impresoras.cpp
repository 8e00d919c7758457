#include "core/Impresoras.h"

#include <QProcess>

namespace hipico {

bool ImpresoraPredeterminada(const QString& nombre) {
    QProcess p;
    p.start(QStringLiteral("lpoptions"), {QStringLiteral("-d"), nombre});
    if (!p.waitForFinished(5000)) return false;
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

}  // namespace hipico
