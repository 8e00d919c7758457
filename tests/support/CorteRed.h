#pragma once

// A network between the program and the database server that a test can cut
// at the worst moment: a TCP relay on a port of its own that forwards every
// connection to the server, and on request drops one connection at its next
// COMMIT, either after the server answered it (the commit happened, the
// answer is lost) or before the server got it (nothing was committed). It
// can also refuse every new connection, as a server out of reach.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <list>
#include <mutex>
#include <string>
#include <thread>

namespace hipico::test {

class CorteRed {
public:
    enum class Corte {
        Ninguno,
        TrasCommit,   // the server commits; its answer never arrives
        AntesCommit,  // the COMMIT never reaches the server
    };

    explicit CorteRed(int puertoServidor) : servidor_(puertoServidor) {
        escucha_ = ::socket(AF_INET, SOCK_STREAM, 0);
        const int uno = 1;
        ::setsockopt(escucha_, SOL_SOCKET, SO_REUSEADDR, &uno, sizeof uno);
        sockaddr_in a = direccion(0);
        ::bind(escucha_, reinterpret_cast<sockaddr*>(&a), sizeof a);
        ::listen(escucha_, 64);
        socklen_t n = sizeof a;
        ::getsockname(escucha_, reinterpret_cast<sockaddr*>(&a), &n);
        puerto_ = ntohs(a.sin_port);
        aceptador_ = std::thread([this] { aceptar(); });
    }
    ~CorteRed() {
        fin_ = true;
        ::shutdown(escucha_, SHUT_RDWR);
        ::close(escucha_);
        aceptador_.join();
        std::lock_guard<std::mutex> l(m_);
        for (std::thread& t : enlaces_) t.join();
    }

    int puerto() const { return puerto_; }
    // The next COMMIT that passes is cut this way (once); `yCaer`: from that
    // moment on the server is out of reach too.
    void cortarEnCommit(Corte c, bool yCaer = false) {
        caer_ = yCaer;
        corte_ = c;
    }
    bool cortado() const { return corte_ == Corte::Ninguno && cortes_ > 0; }
    int cortes() const { return cortes_; }
    // false: every new connection is closed at once (the server out of reach).
    void alcanzable(bool si) { alcanzable_ = si; }

private:
    static sockaddr_in direccion(int puerto) {
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_port = htons(static_cast<uint16_t>(puerto));
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return a;
    }

    void aceptar() {
        while (!fin_) {
            const int cliente = ::accept(escucha_, nullptr, nullptr);
            if (cliente < 0) continue;
            if (!alcanzable_) {
                ::close(cliente);
                continue;
            }
            const int servidor = ::socket(AF_INET, SOCK_STREAM, 0);
            sockaddr_in a = direccion(servidor_);
            if (::connect(servidor, reinterpret_cast<sockaddr*>(&a), sizeof a) != 0) {
                ::close(servidor);
                ::close(cliente);
                continue;
            }
            std::lock_guard<std::mutex> l(m_);
            enlaces_.emplace_back([this, cliente, servidor] { enlazar(cliente, servidor); });
        }
    }

    // Relays one connection until either side closes it or it is cut.
    void enlazar(int cliente, int servidor) {
        char buf[65536];
        bool esperandoRespuesta = false;  // cut after the server's answer to the COMMIT
        pollfd p[2] = {{cliente, POLLIN, 0}, {servidor, POLLIN, 0}};
        while (!fin_) {
            if (::poll(p, 2, 100) <= 0) continue;
            if (p[0].revents & (POLLIN | POLLHUP | POLLERR)) {
                const ssize_t n = ::recv(cliente, buf, sizeof buf, 0);
                if (n <= 0) break;
                const Corte c = corte_;
                if (c != Corte::Ninguno && contieneCommit(buf, n)) {
                    if (caer_) alcanzable_ = false;
                    corte_ = Corte::Ninguno;
                    ++cortes_;
                    if (c == Corte::AntesCommit) break;
                    esperandoRespuesta = true;
                }
                if (!enviar(servidor, buf, n)) break;
            }
            if (p[1].revents & (POLLIN | POLLHUP | POLLERR)) {
                const ssize_t n = ::recv(servidor, buf, sizeof buf, 0);
                if (n <= 0) break;
                if (esperandoRespuesta) break;  // the server committed; the answer is lost
                if (!enviar(cliente, buf, n)) break;
            }
        }
        ::close(cliente);
        ::close(servidor);
    }

    static bool contieneCommit(const char* buf, ssize_t n) {
        // A COM_QUERY packet (command byte 3) whose text is COMMIT.
        static const char kCommit[] = "\x03" "COMMIT";
        const std::string datos(buf, static_cast<std::size_t>(n));
        std::string mayus = datos;
        for (char& ch : mayus) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
        return mayus.find(kCommit) != std::string::npos;
    }

    static bool enviar(int s, const char* buf, ssize_t n) {
        while (n > 0) {
            const ssize_t k = ::send(s, buf, static_cast<std::size_t>(n), MSG_NOSIGNAL);
            if (k <= 0) return false;
            buf += k;
            n -= k;
        }
        return true;
    }

    int servidor_;
    int escucha_ = -1;
    int puerto_ = 0;
    std::atomic<bool> fin_{false};
    std::atomic<bool> alcanzable_{true};
    std::atomic<bool> caer_{false};
    std::atomic<Corte> corte_{Corte::Ninguno};
    std::atomic<int> cortes_{0};
    std::thread aceptador_;
    std::mutex m_;
    std::list<std::thread> enlaces_;
};

}  // namespace hipico::test
