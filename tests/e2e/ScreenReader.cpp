#include "e2e/ScreenReader.h"

#include "e2e/AccessRegistry.h"
#include "e2e/Desktop.h"

#include <xcb/xcb.h>

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

ScreenReader::ScreenReader()
    : registry_(std::make_unique<AccessRegistry>()) {}

ScreenReader::~ScreenReader() {
    bus_.reset();
    QDBusConnection::disconnectFromBus(ConnectionName);
    thread_.quit();
    thread_.wait();
    daemon_.kill();
    daemon_.waitForFinished();
}

bool ScreenReader::start() {
    daemon_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--config-file=" CORVANTA_SESSION_BUS), QStringLiteral("--nofork"),
                   QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(Desktop::Patience))
            return false;
    }
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    bus_ = QDBusConnection::connectToBus(address_, ConnectionName);
    const bool listens =
        bus_->connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                      QStringLiteral("StateChanged"), registry_.get(), SLOT(onStateChanged(const QDBusMessage&)));
    const bool serves = bus_->registerVirtualObject(QStringLiteral("/"), registry_.get(), QDBusConnection::SubPath);
    thread_.start();
    registry_->moveToThread(&thread_);
    return listens && serves && bus_->registerService(AccessRegistry::Name) && tellOnDisplay(address_.toUtf8());
}

QProcessEnvironment ScreenReader::environment() const {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address_);
    return result;
}

Accessible ScreenReader::accessible(const BusPlace& place) const {
    return {*bus_, QString::fromStdString(place.service), QString::fromStdString(place.path)};
}

Accessible ScreenReader::program(qint64 process) const {
    const auto root = registry_->program(process);
    return root ? accessible(*root) : Accessible();
}

Accessible ScreenReader::openMenu(qint64 process) const {
    const auto root = registry_->program(process);
    const std::vector<BusPlace> shown = registry_->shown();
    for (auto place = shown.crbegin(); root && place != shown.crend(); ++place) {
        const Accessible thing = accessible(*place);
        if (place->service == root->service && thing.role() == Accessible::Role::PopupMenu &&
            thing.has(Accessible::State::Showing))
            return thing;
    }
    return {};
}
