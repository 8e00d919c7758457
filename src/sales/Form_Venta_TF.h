#pragma once

#include "gui/Ventana.h"
#include "sales/CajaCobro.h"
#include "sales/VentaTablaFija.h"

#include <QMainWindow>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QTimer;

namespace hipico {

class Context;

// The fixed-table sale window. From the keyboard: race, horse, tables, Enter
// shows the summary (Enter accepts, Esc declines) and sells and prints; a
// scanned ticket code, wherever the cursor is, looks the ticket up for
// payment and Enter on "COBRAR" pays it; F5 goes to the payment box by hand;
// F7 prints the summary; F8 voids the centre's newest ticket; Esc clears
// what is being typed; Ctrl+F4 closes the window. The race's horses with
// their table prices and what the booth sold on each refresh by themselves.
class Form_Venta_TF : public Ventana<QMainWindow> {
    Q_OBJECT
public:
    Form_Venta_TF(Context& ctx, QWidget* parent = nullptr);
    VentaTablaFija& logica() { return logica_; }

    // Handlers, also reachable by the tests.
    void Boton_Procesar_Click();
    void Text_boletoCobro_Enter();
    void Boton_Cobrar_Boleto2_Click();
    void Anulacion_tf();
    void bton_buscar_Click();
    void LIMPIAR();

protected:
    void teclaEscape() override { LIMPIAR(); }

private:
    void construir();
    void mostrarCaballos();
    void mostrarTotales();
    void mostrarUltimo();
    void imprimirResumen();

    VentaTablaFija logica_;
    QLabel* encabezado_ = nullptr;
    QTableWidget* caballos_ = nullptr;
    QLineEdit* textCarrera_ = nullptr;
    QLineEdit* textCaballo_ = nullptr;
    QLineEdit* textTablas_ = nullptr;
    QPushButton* botonProcesar_ = nullptr;
    QLabel* ultimoBoleto_ = nullptr;
    QLineEdit* textCobro_ = nullptr;
    QPushButton* botonCobrar_ = nullptr;
    QLabel* resultadoCobro_ = nullptr;
    CajaCobro cobro_;
    QLabel* totales_ = nullptr;
    QTimer* reloj_ = nullptr;
};

}  // namespace hipico
