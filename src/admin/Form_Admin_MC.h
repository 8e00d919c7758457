#pragma once

#include "admin/ProcesoMacuare.h"
#include "gui/Ventana.h"

#include <QDate>
#include <QVector>
#include <QWidget>

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QTableWidget;
class QTimer;

namespace hipico {

class Context;

// Text of a leg's winners as typed: "4", or "4-7" for a dead heat.
QVector<long long> leerGanadores(const QString& texto, bool* valido);
QString textoGanadores(const QVector<long long>& caballos);

// The Macuare administration (menu admin_mc): the day's legs and house
// share, opening and closing the Macuare, the winners of each leg (the
// seventh settles the pool), the settlement, single tickets (void, pay at
// the desk) and the ticket search. Opens the quick results window.
class Form_Admin_MC : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Admin_MC(Context& ctx, QWidget* parent = nullptr);

    void cargar();
    void Guardar_Click();
    void Abrir_Click(bool abierto);
    void Procesar_Click();
    void Buscar_Click();
    QWidget* Express_Click();
    // The day's Macuare per group into rpt_diario_mc, report kind 14.
    bool Diario_Click();
    QLineEdit* ganadores(int pierna) const { return ganadores_[pierna]; }
    QString fecha() const;

private:
    void mostrarLiquidacion();

    ProcesoMacuare proceso_;
    QDateEdit* fecha_ = nullptr;
    QLineEdit* hipodromo_ = nullptr;
    QLineEdit* carrera1_ = nullptr;
    QLineEdit* casa_ = nullptr;
    QLabel* estado_ = nullptr;
    QVector<QLineEdit*> ganadores_;
    QVector<QLabel*> carreras_;
    QLabel* liquidacion_ = nullptr;
    QComboBox* grupo_ = nullptr;
    QComboBox* clase_ = nullptr;
    QLineEdit* codigo_ = nullptr;
    QTableWidget* boletos_ = nullptr;
};

// The quick results window: a leg's winner as soon as its race is run, and
// at once the tickets and combinations still alive, by group.
class Form_Admin_Express : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Admin_Express(Context& ctx, const QString& fecha, QWidget* parent = nullptr);

    void Fijar_Click();
    void mostrar();
    QComboBox* pierna() const { return pierna_; }
    QLineEdit* caballos() const { return caballos_; }
    QTableWidget* vivos() const { return vivos_; }

signals:
    void cerrada();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    ProcesoMacuare proceso_;
    QString fecha_;
    QComboBox* pierna_ = nullptr;
    QLineEdit* caballos_ = nullptr;
    QLabel* piernas_ = nullptr;
    QLabel* total_ = nullptr;
    QTableWidget* vivos_ = nullptr;
};

// The customer-facing Macuare screen (menu mc_pantalla): the legs and their
// winners so far, the pool and the tickets still alive; it refreshes itself.
class Form_Pant_MC : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_Pant_MC(Context& ctx, QWidget* parent = nullptr);
    void refrescar();

    static constexpr int kRefrescoMs = 5000;

private:
    ProcesoMacuare proceso_;
    QVector<QLabel*> carreras_, ganadores_;
    QLabel* pozo_ = nullptr;
    QLabel* vivos_ = nullptr;
    QLabel* fecha_ = nullptr;
    QTimer* timer_ = nullptr;
};

// The day's combinations with their amounts; "Imprimir" writes rpt_macuare
// and opens report kind 13.
class Form_combinaciones : public Ventana<QWidget> {
    Q_OBJECT
public:
    Form_combinaciones(Context& ctx, QWidget* parent = nullptr);
    void Buscar_Click();
    bool Imprimir_Click();

private:
    QDateEdit* fecha_ = nullptr;
    QTableWidget* grilla_ = nullptr;
    QLabel* total_ = nullptr;
};

}  // namespace hipico
