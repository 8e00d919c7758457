#pragma once

#include "gui/Ventana.h"
#include "reportes/Documento.h"

#include <QWidget>
#include <functional>
#include <memory>

class QLabel;
class QPushButton;
class QScrollArea;

namespace hipico {

// The report window: the preview of a laid-out report, one page at a time
// (only the page on screen is drawn), from which the user prints it or
// exports it to PDF, CSV or a spreadsheet. The general report window
// (RPT_Diario_WIN) and the ticket report window (RPT_Jugadas_WIN) are this
// window under their two names.
class RPT_Diario_WIN : public Ventana<QWidget> {
    Q_OBJECT
public:
    RPT_Diario_WIN(Context& ctx, const QString& nombre, const QString& titulo, std::shared_ptr<const Documento> documento,
                   QWidget* parent = nullptr);

    const Documento& documento() const { return *documento_; }
    int pagina() const { return pagina_; }
    void irA(int pagina);
    void zoom(double factor);

    enum class Formato { Pdf, Csv, Xlsx };
    // Exports to a file; says so when it cannot be written. Returns whether it was.
    bool exportar(Formato formato, const QString& archivo);
    void imprimir();

    // Asks the file to export to ("" : cancelled); a file dialog unless
    // replaced (tests).
    std::function<QString(const QString& titulo, const QString& filtro)> pedirArchivo;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void exportarComo(Formato formato);
    void mostrar();

    std::shared_ptr<const Documento> documento_;
    int pagina_ = 0;
    double zoom_ = 1.0;
    QScrollArea* area_ = nullptr;
    QLabel* hoja_ = nullptr;
    QLabel* numero_ = nullptr;
};

}  // namespace hipico
