// Booths selling, paying and voiding on their own connections while their
// server is killed (kill -9) and started again, on a server of this test's
// own: every booth sells again without signing in, no ticket lacks its code
// or keys, every ticket stored is one its booth reported sold and printed
// (and the other way round), every payment reported is stored, and no call
// waits longer than a bound.
#include "BoothFixture.h"

#include "core/Connections.h"
#include "core/Guardia.h"
#include "schema/Demo.h"
#include "schema/SchemaLoader.h"
#include "support/ServidorPrivado.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QtTest>
#include <atomic>
#include <set>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

constexpr int kCabinas = 4;
// No call may wait longer: a connection attempt's bound and some margin.
constexpr qint64 kCotaMs = (Db::kConnectSeconds + 3) * 1000;

// One booth: its own connection, dialogs, clock (its own sale time, so its
// tickets are told apart by `hora`) and printer port.
struct Cabina {
    Cabina(TestEnv& env, const Config& config, int i, const QString& carpeta)
        : t(env, env.ctx.session), hora(QStringLiteral("11:0%1:00").arg(i)),
          puerto(carpeta + QStringLiteral("/cabina%1.prn").arg(i)) {
        t.clock.set(QDateTime(env.clock.today(), QTime::fromString(hora, "hh:mm:ss")));
        t.ctx.cnServidor = Db::open(cadenaServidor(config));
        t.ctx.session.confLocal.impresion = 1;
        t.ctx.session.confLocal.puerto = puerto;
    }
    Taquilla t;
    QString hora;
    QString puerto;
    std::vector<QString> premios;   // winners of this booth, to pay
    std::set<QString> vendidos;     // reported sold
    std::set<QString> pagados;      // reported paid
    int pagosInciertos = 0;         // payments stopped by the connection
    int ventasTrasArranque = 0;
    int avisosConexion = 0;         // commands that told the user the connection failed
    int avisosDeMas = 0;            // commands that showed more than one message
    qint64 peor = 0;

    // Runs one command as the window does (the error guard) and times it.
    template <class F>
    auto medir(F&& f) {
        QElapsedTimer reloj;
        reloj.start();
        auto r = intentar(t.ctx, QStringLiteral("Form_Venta_WIN"), std::forward<F>(f));
        peor = std::max(peor, reloj.elapsed());
        int mensajes = 0;
        for (const auto& caja : t.dialogs.shown()) {
            if (caja.kind != ScriptedDialogs::Kind::Message) continue;
            ++mensajes;
            if (caja.title == kTituloConexion) ++avisosConexion;
        }
        if (mensajes > 1) ++avisosDeMas;
        t.dialogs.clear();
        return r;
    }
    // The code sold, "" when not sold.
    QString vender(int k) {
        const auto r = medir([&] { return t.venta.procesarVenta("1", QString::number(1 + k % 7), "1"); });
        if (!r || r->resultado != VentaGanadores::Resultado::Vendido) return {};
        vendidos.insert(r->boleto.codigo);
        return r->boleto.codigo;
    }
    void anular(const QString& codigo) {
        t.dialogs.type(codigo).type("ANULADO").yes();
        medir([&] { return t.venta.anularBoleto(); });
    }
    void pagar() {
        if (premios.empty()) return;
        const QString codigo = premios.back();
        premios.pop_back();
        const auto c = medir([&] { return t.venta.buscarBoletoCobro(codigo); });
        if (!c || !c->pagable) return;
        const auto pagado = medir([&] { return t.venta.cobrarBoleto(); });
        if (!pagado) ++pagosInciertos;
        if (pagado && *pagado) pagados.insert(codigo);
    }
    // The codes the printer received.
    std::set<QString> impresos() const {
        std::set<QString> out;
        static const QRegularExpression re(QStringLiteral("BOLETO: (\\S+) C: "));
        auto it = re.globalMatch(leerPuerto(puerto));
        while (it.hasNext()) out.insert(it.next().captured(1));
        return out;
    }
};

}  // namespace

class TstCaida : public QObject {
    Q_OBJECT
    QTemporaryDir carpeta;  // the booths' printer ports
    std::unique_ptr<TestEnv> env;

private slots:
    void initTestCase() { env = entorno("caida", carpeta.path()); }

    void boothsOutliveAServerKilled() {
        // The session of a booth signed in (the demo day), used on the test's own server.
        env->loadDemo();
        entrar(*env, "taquilla1");
        ServidorPrivado servidor("caida", 57);
        QVERIFY(servidor.arrancar());
        const Config c = servidor.config("t_caida_propio");
        crearEsquema(c.servidor, scriptCentral(), true);
        auto admin = Db::open(cadenaServidor(c));
        cargarDemo(*admin, env->clock.today());
        admin->exec("update grupos set admin_cupo=0, apuesta_max_win=0, pedirclave=0, anular_boleto_win=1");
        std::vector<std::unique_ptr<Cabina>> cabinas;
        for (int i = 0; i < kCabinas; ++i) {
            cabinas.push_back(std::make_unique<Cabina>(*env, c, i, carpeta.path()));
            for (int k = 0; k < 80; ++k)
                cabinas[i]->premios.push_back(
                    venderBoleto(*admin, env->clock.today(), 2, 3, 1 + k % 3, "07", "LOS PINOS").codigo);
        }
        liquidar(*admin, fechaTrabajo(env->ctx), 2, 3, 12.5);

        std::atomic<bool> fin{false}, arrancado{false};
        std::vector<std::thread> hilos;
        for (auto& cab : cabinas)
            hilos.emplace_back([&, cb = cab.get()] {
                for (int k = 0; !fin; ++k) {
                    const bool trasArranque = arrancado;
                    const QString codigo = cb->vender(k);
                    if (!codigo.isEmpty() && trasArranque) ++cb->ventasTrasArranque;
                    // Every fifth step voids what it just sold, every twentieth pays a winner.
                    if (!codigo.isEmpty() && k % 5 == 4) cb->anular(codigo);
                    if (k % 20 == 7) cb->pagar();
                }
            });
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
        servidor.matar();
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        QVERIFY(servidor.arrancar());
        arrancado = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(2000));
        fin = true;
        for (auto& h : hilos) h.join();

        // A sale still unknown is settled by the booth's next sale.
        for (auto& cab : cabinas) {
            for (int intento = 0; cab->t.venta.ventaIncierta() && intento < 3; ++intento) cab->vender(intento);
            QVERIFY(!cab->t.venta.ventaIncierta());
        }

        auto db = Db::open(cadenaServidor(c));
        QCOMPARE(Row::toInteger(db->scalar("SELECT count(*) FROM ma_principal WHERE nu_boleto = '' OR llave = '0' "
                                           "OR llave2 = '0' OR llave5 = '0'")),
                 0LL);
        for (auto& cab : cabinas) {
            qInfo("booth %s: %zu sold (%d after the restart), %zu paid, %d payments cut, %d connection messages, "
                  "slowest call %lld ms",
                  qPrintable(cab->hora), cab->vendidos.size(), cab->ventasTrasArranque, cab->pagados.size(),
                  cab->pagosInciertos, cab->avisosConexion, cab->peor);
            QVERIFY(cab->avisosConexion > 0);  // the booth felt the server die
            QCOMPARE(cab->avisosDeMas, 0);     // and was told once per command
            QVERIFY2(cab->ventasTrasArranque > 0, qPrintable(cab->hora));
            QVERIFY2(cab->peor < kCotaMs, qPrintable(QString("%1: %2 ms").arg(cab->hora).arg(cab->peor)));
            // Stored (and not voided since) or voided: every ticket of this booth's time.
            std::set<QString> guardados;
            for (const Row& r : db->query("SELECT nu_boleto FROM ma_principal WHERE hora = ? UNION ALL SELECT "
                                          "nu_boleto FROM bitacora WHERE hora = ? AND estatus = 5",
                                          {cab->hora, cab->hora}))
                guardados.insert(r.text("nu_boleto"));
            QCOMPARE(guardados.size(), cab->vendidos.size());
            QVERIFY(guardados == cab->vendidos);
            QVERIFY(cab->impresos() == cab->vendidos);
            QVERIFY(cab->vendidos.size() > 5);
            // Every payment reported is stored.
            for (const QString& p : cab->pagados)
                QCOMPARE(Row::toInteger(db->scalar("SELECT estatus FROM ma_principal WHERE nu_boleto = ?", {p})), 2LL);
        }
        // A payment stored but not reported can only be one the server's death cut off.
        std::set<QString> pagados;
        int inciertos = 0;
        for (auto& cab : cabinas) {
            pagados.insert(cab->pagados.begin(), cab->pagados.end());
            inciertos += cab->pagosInciertos;
        }
        int sinAviso = 0;
        for (const Row& r : db->query("SELECT nu_boleto FROM ma_principal WHERE carrera = 2 AND estatus = 2"))
            if (!pagados.count(r.text("nu_boleto"))) ++sinAviso;
        QVERIFY(sinAviso <= inciertos);
        QVERIFY(!pagados.empty());
        // Paid exactly once: the day row holds each payment once.
        QCOMPARE(Row::toNumber(db->scalar("SELECT coalesce(sum(premios), 0) FROM ventas_ganadores_general")),
                 Row::toNumber(db->scalar("SELECT coalesce(sum(cobrado), 0) FROM ma_principal WHERE estatus = 2")));
        servidor.detener();
    }
};

QTEST_MAIN(TstCaida)
#include "tst_caida.moc"
