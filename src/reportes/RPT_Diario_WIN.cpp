#include "reportes/RPT_Diario_WIN.h"

#include "core/Context.h"
#include "gui/Campos.h"
#include "reportes/Exportar.h"

#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace hipico {

namespace {
constexpr int kDpiPantalla = 96;
}

RPT_Diario_WIN::RPT_Diario_WIN(Context& ctx, const QString& nombre, const QString& titulo,
                               std::shared_ptr<const Documento> documento, QWidget* parent)
    : Ventana(ctx, parent, nombre, titulo), documento_(std::move(documento)) {
    pedirArchivo = [this](const QString& t, const QString& filtro) {
        return QFileDialog::getSaveFileName(this, t, QString(), filtro);
    };
    auto* barra = new QHBoxLayout;
    const auto agregar = [&](const QString& texto, const char* nombreBoton, auto accion) {
        QPushButton* b = boton(texto, QString::fromLatin1(nombreBoton));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, accion);
        barra->addWidget(b);
        return b;
    };
    QPushButton* imprimir = agregar(QStringLiteral("Imprimir"), "Boton_Imprimir", [this] { this->imprimir(); });
    agregar(QStringLiteral("PDF"), "Boton_PDF", [this] { exportarComo(Formato::Pdf); });
    agregar(QStringLiteral("CSV"), "Boton_CSV", [this] { exportarComo(Formato::Csv); });
    agregar(QStringLiteral("Excel"), "Boton_Excel", [this] { exportarComo(Formato::Xlsx); });
    barra->addSpacing(16);
    agregar(QStringLiteral("|<"), "Boton_Primera", [this] { irA(0); });
    agregar(QStringLiteral("<"), "Boton_Anterior", [this] { irA(pagina_ - 1); });
    numero_ = new QLabel;
    numero_->setObjectName(QStringLiteral("Pagina"));
    barra->addWidget(numero_);
    agregar(QStringLiteral(">"), "Boton_Siguiente", [this] { irA(pagina_ + 1); });
    agregar(QStringLiteral(">|"), "Boton_Ultima", [this] { irA(documento_->paginas() - 1); });
    barra->addSpacing(16);
    agregar(QStringLiteral("-"), "Boton_Alejar", [this] { zoom(zoom_ / 1.25); });
    agregar(QStringLiteral("+"), "Boton_Acercar", [this] { zoom(zoom_ * 1.25); });
    barra->addStretch(1);

    hoja_ = new QLabel;
    hoja_->setObjectName(QStringLiteral("Hoja"));
    hoja_->setAlignment(Qt::AlignCenter);
    area_ = new QScrollArea;
    area_->setObjectName(QStringLiteral("Vista"));
    area_->setWidget(hoja_);
    area_->setAlignment(Qt::AlignCenter);
    area_->setBackgroundRole(QPalette::Dark);

    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(barra);
    raiz->addWidget(area_, 1);
    setAttribute(Qt::WA_DeleteOnClose);
    primerFoco(imprimir);
    resize(documento_->plantilla().horizontal ? 1000 : 820, 700);
    // The page opens as wide as the window.
    zoom_ = std::min(1.0, (width() - 60) / (documento_->tamano().width() * kDpiPantalla / 72.0));
    mostrar();
}

void RPT_Diario_WIN::irA(int pagina) {
    const int destino = std::clamp(pagina, 0, std::max(0, documento_->paginas() - 1));
    if (destino == pagina_ && !hoja_->pixmap().isNull()) return;
    pagina_ = destino;
    mostrar();
}

void RPT_Diario_WIN::zoom(double factor) {
    zoom_ = std::clamp(factor, 0.4, 3.0);
    mostrar();
}

void RPT_Diario_WIN::mostrar() {
    hoja_->setPixmap(QPixmap::fromImage(imagenPagina(*documento_, pagina_, qRound(kDpiPantalla * zoom_))));
    hoja_->adjustSize();
    numero_->setText(QStringLiteral("Página %1 de %2").arg(pagina_ + 1).arg(documento_->paginas()));
}

bool RPT_Diario_WIN::exportar(Formato formato, const QString& archivo) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool hecho = false;
    switch (formato) {
    case Formato::Pdf:
        hecho = exportarPdf(*documento_, archivo);
        break;
    case Formato::Csv:
        hecho = exportarCsv(*documento_, archivo);
        break;
    case Formato::Xlsx:
        hecho = exportarXlsx(*documento_, archivo);
        break;
    }
    QApplication::restoreOverrideCursor();
    if (!hecho) ctx_.dialogs.refuse(windowTitle(), QStringLiteral("NO SE PUDO GUARDAR EL ARCHIVO:\n") + archivo);
    return hecho;
}

void RPT_Diario_WIN::exportarComo(Formato formato) {
    static const char* const filtros[] = {"Documento PDF (*.pdf)", "Archivo CSV (*.csv)", "Libro de Excel (*.xlsx)"};
    static const char* const extensiones[] = {".pdf", ".csv", ".xlsx"};
    const int i = static_cast<int>(formato);
    QString archivo = pedirArchivo(QStringLiteral("Exportar reporte"), QString::fromLatin1(filtros[i]));
    if (archivo.isEmpty()) return;
    if (!archivo.endsWith(QLatin1String(extensiones[i]), Qt::CaseInsensitive)) archivo += QLatin1String(extensiones[i]);
    exportar(formato, archivo);
}

void RPT_Diario_WIN::imprimir() {
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setDocName(windowTitle());
    impresora.setPageLayout(documento_->diseno());
    QPrintDialog dialogo(&impresora, this);
    dialogo.setMinMax(1, documento_->paginas());
    if (dialogo.exec() != QDialog::Accepted) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    imprimirDocumento(*documento_, impresora);
    QApplication::restoreOverrideCursor();
}

void RPT_Diario_WIN::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageDown) irA(pagina_ + 1);
    else if (event->key() == Qt::Key_PageUp) irA(pagina_ - 1);
    else if (event->matches(QKeySequence::Print)) imprimir();
    else Ventana::keyPressEvent(event);
}

}  // namespace hipico
