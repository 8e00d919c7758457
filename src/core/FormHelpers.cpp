#include "core/FormHelpers.h"

#include <QGuiApplication>
#include <QPrinterInfo>
#include <QProcess>
#include <QScreen>
#include <QWidget>

namespace hipico {

void CentrarForm(QWidget* form) {
    QScreen* screen = form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const int ancho = screen->geometry().width();
    form->move((ancho / 2) - (form->width() / 2), form->y());
}

void MantenerDentro(QWidget* hijo, const QWidget* padre) {
    if (!hijo || !padre) return;
    const int maxX = std::max(0, padre->width() - hijo->width());
    const int maxY = std::max(0, padre->height() - hijo->height());
    hijo->move(std::clamp(hijo->x(), 0, maxX), std::clamp(hijo->y(), 0, maxY));
}

bool ImpresoraPredeterminada(const QString& nombre) {
    QProcess p;
    p.start(QStringLiteral("lpoptions"), {QStringLiteral("-d"), nombre});
    if (!p.waitForFinished(5000)) return false;
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

QString impresoraPorDefecto() { return QPrinterInfo::defaultPrinterName(); }

}  // namespace hipico
