#include "gui/Estilo.h"

#include <QApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QTranslator>
#include <QStyle>
#include <QWidget>

static void initGuiResources() { Q_INIT_RESOURCE(hipico); }

namespace hipico {

QString hojaDeEstilo() {
    initGuiResources();
    QFile f(QStringLiteral(":/gui/hipico.qss"));
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(f.readAll());
}

void aplicarEstilo() { qApp->setStyleSheet(hojaDeEstilo()); }

bool cargarTraducciones() {
    static QTranslator* qt = nullptr;
    if (qt) return true;
    auto* t = new QTranslator(qApp);
    if (!t->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete t;
        return false;
    }
    QCoreApplication::installTranslator(t);
    qt = t;
    return true;
}

void marcar(QWidget* widget, const char* propiedad, const QVariant& valor) {
    if (widget->property(propiedad) == valor) return;
    widget->setProperty(propiedad, valor);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

}  // namespace hipico
