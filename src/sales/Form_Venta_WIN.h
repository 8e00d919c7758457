#pragma once

#include "gui/Ventana.h"
#include "sales/CajaCobro.h"
#include "sales/VentaGanadores.h"

#include <QMainWindow>
#include <QPointer>

class QAction;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTimer;

namespace hipico {

class Context;
class Form_BoletosTaquilla;

// The winner-bet sale window. From the keyboard: race, horse, amount, Enter
// sells and prints (the client box, for groups with client accounts, is
// reached with F3 or Tab); a scanned ticket code, wherever the cursor is,
// looks the ticket up for payment and Enter on "COBRAR" pays it; F5 goes to
// the payment box by hand; F6 lists the booth's tickets of the day; F7
// prints the summary; F8 voids; F9 prints a copy of the last ticket; F12
// is the cash-up; Esc cancels what is being typed (or the password frame);
// Ctrl+F4 closes the window. After each action and each refusal the cursor
// is where the next key belongs.
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
    // F6: the booth's tickets of the day (the list stays open until Esc).
    Form_BoletosTaquilla* boletosDelDia();

    // The keys of the window, as its hint bar shows them.
    QString teclas() const;

protected:
    void teclaEscape() override { Escape(); }

private:
    void construir();
    QWidget* construirVenta();
    QWidget* construirCobro();
    QWidget* construirTotales();
    void MostrarFrameClave(bool visible);
    void cargarCarreras();
    void cargarCorredores();
    void mostrarCarreras();
    void mostrarCorredores();
    void mostrarTotales();
    void mostrarNombreCaballo();
    void mostrarCosto();
    void mostrarUnidad();
    void mostrarUltimo();
    void cambiarUnidad(UnidadVenta u);
    void caballoEnter();
    void anular();
    void reimprimir();
    void imprimirResumen();
    void cuadreFinal();
    void limpiarCobro();
    void cobrarLeido(const QString& codigo);
    void vendido(const VentaGanadores::Boleto& b);
    void enCampo(VentaGanadores::Campo campo);

    VentaGanadores logica_;
    QVector<VentaGanadores::Corredor> corredores_;
    QString codigoUltimo_;
    QPointer<Form_BoletosTaquilla> lista_;

    QLabel* encabezado_ = nullptr;
    QListWidget* listaCarreras_ = nullptr;
    QListWidget* listaCorredores_ = nullptr;
    QLineEdit* textCarrera_ = nullptr;
    QLineEdit* textCaballo_ = nullptr;
    QLabel* nombreCaballo_ = nullptr;
    QLineEdit* textCliente_ = nullptr;
    QLabel* etiquetaCliente_ = nullptr;
    QLineEdit* textMonto_ = nullptr;
    QLabel* etiquetaUnidad_ = nullptr;
    QLabel* costo_ = nullptr;
    QPushButton* botonProcesar_ = nullptr;
    QLabel* ultimoBoleto_ = nullptr;
    QFrame* frameClave_ = nullptr;
    QLineEdit* textClave_ = nullptr;
    QLineEdit* textCobro_ = nullptr;
    QPushButton* botonCobrar_ = nullptr;
    QLabel* resultadoCobro_ = nullptr;
    CajaCobro cobro_;
    QLabel* totVenta_ = nullptr;
    QLabel* totPagado_ = nullptr;
    QLabel* totPorPagar_ = nullptr;
    QLabel* totAnulados_ = nullptr;
    QLabel* totSaldo_ = nullptr;
    QLabel* totCaja_ = nullptr;
    QLabel* tramo_ = nullptr;
    QListWidget* ventasCaballos_ = nullptr;
    QAction* accionGanadores_ = nullptr;
    QAction* accionBolivares_ = nullptr;
    QAction* accionAnular_ = nullptr;
    QTimer* reloj_ = nullptr;
};

}  // namespace hipico
