#pragma once

// A MariaDB server of a test's own (started and stopped by scripts/dbserver
// in a folder and on a port nobody else uses), for tests that kill it.
#include "core/Config.h"
#include "support/TestEnv.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QtTest>
#include <csignal>
#include <sys/types.h>

namespace hipico::test {

class ServidorPrivado {
public:
    // The port is the suite's server port plus `desplazamiento`, so test
    // programs running side by side never share one.
    ServidorPrivado(const QString& nombre, int desplazamiento)
        : carpeta_(QDir::current().absoluteFilePath(nombre + "-db")),
          puerto_(serverConfig().servidor.puerto + desplazamiento) {}
    ~ServidorPrivado() { detener(); }

    bool arrancar() { return script("start"); }
    bool detener() { return script("stop"); }
    // kill -9: the server dies with its connections open.
    void matar() {
        QFile f(carpeta_ + "/mysqld.pid");
        if (!f.open(QIODevice::ReadOnly)) return;
        const pid_t pid = static_cast<pid_t>(f.readAll().trimmed().toLongLong());
        if (pid <= 0) return;
        ::kill(pid, SIGKILL);
        for (int i = 0; i < 100 && ::kill(pid, 0) == 0; ++i) QTest::qSleep(50);
    }

    // A deployment whose central server is this one, with the named schema.
    Config config(const QString& base) const {
        Config c = serverConfig();
        c.servidor.puerto = puerto_;
        c.servidor.base = base;
        c.hipicos.puerto = puerto_;
        c.localPuerto = puerto_;
        return c;
    }
    int puerto() const { return puerto_; }

private:
    bool script(const char* orden) {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("HIPICO_DB_DIR", carpeta_);
        env.insert("HIPICO_DB_PORT", QString::number(puerto_));
        env.insert("HIPICO_DB_FAST", "1");
        // A plain server of its own also while the suite runs on a cluster
        // (whose nodes scripts/dbserver would otherwise take as the server).
        env.remove("HIPICO_DB_PORTS");
        p.setProcessEnvironment(env);
        p.start(qEnvironmentVariable("HIPICO_SOURCE_DIR") + "/scripts/dbserver", {QString::fromLatin1(orden)});
        return p.waitForFinished(60000) && p.exitCode() == 0;
    }

    QString carpeta_;
    int puerto_;
};

}  // namespace hipico::test
