#pragma once

#include "gui/Ventana.h"
#include "sales/VentaGanadores.h"

#include <QMainWindow>

class QAction;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTimer;

namespace hipico {

class Context;

// The winner-bet sale window. From the keyboard: race, horse, (client),
// amount, Enter sells and prints; F5 goes to the payment box, which takes a
// scanned code followed by Enter, then Enter on "COBRAR" pays; Esc cancels
// what is being typed (or the password frame); F9 reprints the last piece;
// Ctrl+F4 closes the window.
class Form_Venta_WIN : public Ventana<QMainWindow> {
    Q_OBJECT
public:
    Form_Venta_WIN(Context& ctx, QWidget* parent = nullptr);
    VentaGanadores& logica() { return logica_; }

    // Handlers, also reachable by the tests.
    void Boton_Procesar_Click();
    void Text_Clave_Enter();
    void Text_boletoCobro_Enter();
    void Boton_Cobrar_Boleto2_Click();
    void bton_buscar_Click();
    void LIMPIAR();
    void Escape();

protected:
    void teclaEscape() override { Escape(); }

private:
    void construir();
    void MostrarFrameClave(bool visible);
    void cargarCarreras();
    void cargarCorredores();
    void mostrarCarreras();
    void mostrarCorredores();
    void mostrarTotales();
    void mostrarNombreCaballo();
    void mostrarUnidad();
    void cambiarUnidad(UnidadVenta u);
    void anular();
    void imprimirResumen();
    void cuadreFinal();
    void limpiarCobro();
    void vendido(const VentaGanadores::Boleto& b);

    VentaGanadores logica_;
    QVector<VentaGanadores::Corredor> corredores_;

    QLabel* encabezado_ = nullptr;
    QListWidget* listaCarreras_ = nullptr;
    QListWidget* listaCorredores_ = nullptr;
    QLineEdit* textCarrera_ = nullptr;
    QLineEdit* textCaballo_ = nullptr;
    QLabel* nombreCaballo_ = nullptr;
    QLineEdit* textCliente_ = nullptr;
    QLabel* etiquetaCliente_ = nullptr;
    QLineEdit* textMonto_ = nullptr;
    QLabel* etiquetaMonto_ = nullptr;
    QLabel* etiquetaUnidad_ = nullptr;
    QPushButton* botonProcesar_ = nullptr;
    QLabel* ultimoBoleto_ = nullptr;
    QFrame* frameClave_ = nullptr;
    QLineEdit* textClave_ = nullptr;
    QLineEdit* textCobro_ = nullptr;
    QPushButton* botonCobrar_ = nullptr;
    QLabel* resultadoCobro_ = nullptr;
    QLabel* totVenta_ = nullptr;
    QLabel* totPagado_ = nullptr;
    QLabel* totPorPagar_ = nullptr;
    QLabel* totAnulados_ = nullptr;
    QLabel* totSaldo_ = nullptr;
    QLabel* totCaja_ = nullptr;
    QListWidget* ventasCaballos_ = nullptr;
    QAction* accionGanadores_ = nullptr;
    QAction* accionBolivares_ = nullptr;
    QAction* accionAnular_ = nullptr;
    QTimer* reloj_ = nullptr;
};

}  // namespace hipico
