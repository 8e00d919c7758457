#pragma once

#include "gui/Ventana.h"
#include "signin/Login.h"

#include <QWidget>
#include <functional>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QThread;
class QTimer;

namespace hipico {

class Context;

// The sign-in window: user name, password, the program version, the network
// state and this machine's public address. The address is asked in the
// background; the window stays alive (hidden) after the sign-in until the
// answer has come, so that it is recorded with the login.
class frmLogin : public Ventana<QWidget> {
    Q_OBJECT
public:
    explicit frmLogin(Context& ctx, QWidget* parent = nullptr);
    ~frmLogin() override;

    // Called after a successful sign-in, before this window closes: opens the main menu.
    std::function<void()> alAceptar;
    // Ends the program (Cancel, and the refusals that end it).
    std::function<void()> terminar;

    Login& logica() { return login_; }
    // Whether the public address lookup is still running.
    bool buscandoIp() const;

    void cmdOK_Click();
    void cmdCancel_Click();
    void Timer1_Timer();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buscarIpPublica();
    void mostrarIp();

    Login login_;
    QLineEdit* txtUserName_;
    QLineEdit* txtPassword_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
    QLabel* lblVersion_;
    QLabel* Label_internet_;
    QLineEdit* Text_datos_;
    QTimer* Timer1_;
    QThread* busqueda_ = nullptr;
    std::shared_ptr<QString> resultadoIp_;
    // What the address services said.
    enum class Red { SinServicios, Preguntando, Respondio, SinRespuesta };
    Red red_ = Red::Preguntando;
    bool ipBuscada_ = false;
    bool aceptado_ = false;
    bool terminado_ = false;
};

}  // namespace hipico
