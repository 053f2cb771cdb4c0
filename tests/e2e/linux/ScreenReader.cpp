#include "e2e/ScreenReader.h"

#include "e2e/Desktop.h"
#include "e2e/GuardedProcess.h"
#include "e2e/linux/AccessRegistry.h"
#include "e2e/linux/BusAccess.h"

#include <QThread>

#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>

namespace {

const QString ConnectionName = QStringLiteral("e2e");

/// Writes where the bus is to the display, where programs look for it first; false when that fails.
bool tellOnDisplay(const QByteArray& address) {
    const QByteArray property = QByteArrayLiteral("AT_SPI_BUS");
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> display(xcb_connect(nullptr, nullptr),
                                                                               &xcb_disconnect);
    if (xcb_connection_has_error(display.get()) != 0)
        return false;
    const auto asked =
        xcb_intern_atom(display.get(), 0, static_cast<uint16_t>(property.size()), property.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(display.get(), asked, nullptr), &std::free);
    if (atom == nullptr)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display.get())).data->root;
    const auto changed =
        xcb_change_property_checked(display.get(), XCB_PROP_MODE_REPLACE, root, atom->atom, XCB_ATOM_STRING, 8,
                                    static_cast<uint32_t>(address.size()), address.constData());
    const std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error(xcb_request_check(display.get(), changed),
                                                                           &std::free);
    return error == nullptr;
}

} // namespace

class ScreenReader::Impl final {
public:
    Impl()
        : registry_(std::make_unique<AccessRegistry>()) {}
    ~Impl() {
        access_.reset();
        QDBusConnection::disconnectFromBus(ConnectionName);
        thread_.quit();
        thread_.wait();
        daemon_.kill();
        daemon_.waitForFinished();
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    bool start();
    const QString& address() const { return address_; }
    const AccessRegistry& registry() const { return *registry_; }
    Accessible accessible(const BusPlace& place) const {
        return {*access_, BusAccess::id(QString::fromStdString(place.service), QString::fromStdString(place.path))};
    }

private:
    GuardedProcess daemon_;
    QString address_;
    std::unique_ptr<BusAccess> access_;
    QThread thread_; ///< the registry's: programs wait for its answers, whatever the test is doing
    std::unique_ptr<AccessRegistry> registry_;
};

bool ScreenReader::Impl::start() {
    daemon_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--config-file=" CORVANTA_SESSION_BUS), QStringLiteral("--nofork"),
                   QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(Desktop::Patience))
            return false;
    }
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    QDBusConnection bus = QDBusConnection::connectToBus(address_, ConnectionName);
    const bool listens =
        bus.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                    QStringLiteral("StateChanged"), registry_.get(), SLOT(onStateChanged(const QDBusMessage&)));
    const bool serves = bus.registerVirtualObject(QStringLiteral("/"), registry_.get(), QDBusConnection::SubPath);
    thread_.start();
    registry_->moveToThread(&thread_);
    access_ = std::make_unique<BusAccess>(bus);
    return listens && serves && bus.registerService(AccessRegistry::Name) && tellOnDisplay(address_.toUtf8());
}

ScreenReader::ScreenReader()
    : impl_(std::make_unique<Impl>()) {}

ScreenReader::~ScreenReader() = default;

bool ScreenReader::start() {
    return impl_->start();
}

QProcessEnvironment ScreenReader::environment() const {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    // No other bus of the session than this.
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), impl_->address());
    return result;
}

Accessible ScreenReader::program(qint64 process) const {
    const auto root = impl_->registry().program(process);
    return root ? impl_->accessible(*root) : Accessible();
}

Accessible ScreenReader::openMenu(qint64 process) const {
    const auto root = impl_->registry().program(process);
    const std::vector<BusPlace> shown = impl_->registry().shown();
    for (auto place = shown.crbegin(); root && place != shown.crend(); ++place) {
        const Accessible thing = impl_->accessible(*place);
        if (place->service == root->service && thing.role() == Accessible::Role::PopupMenu &&
            thing.has(Accessible::State::Showing))
            return thing;
    }
    return {};
}

void ScreenReader::crash(qint64 process) const {
    ::kill(static_cast<pid_t>(process), SIGSEGV);
}
