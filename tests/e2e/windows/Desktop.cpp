#include "e2e/Desktop.h"

#include <QHash>
#include <QRegularExpression>
#include <QtTest>

#include <windows.h>

#include <vector>

namespace {

struct Found {
    HWND handle;
    QString title;
    Desktop::Window window;
};

QRect placeOf(HWND handle) {
    RECT place{};
    GetWindowRect(handle, &place);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

BOOL CALLBACK collect(HWND handle, LPARAM list) {
    if (IsWindowVisible(handle) == 0)
        return TRUE;
    wchar_t title[512] = {};
    GetWindowTextW(handle, title, 512);
    DWORD process = 0;
    GetWindowThreadProcessId(handle, &process);
    reinterpret_cast<std::vector<Found>*>(list)->push_back(
        {handle,
         QString::fromWCharArray(title),
         {QString::number(reinterpret_cast<quintptr>(handle)), process, placeOf(handle)}});
    return TRUE;
}

std::vector<Found> allWindows(qint64 process) {
    std::vector<Found> found;
    EnumWindows(collect, reinterpret_cast<LPARAM>(&found));
    std::erase_if(found, [process](const Found& one) { return process != 0 && one.window.process != process; });
    return found;
}

std::vector<Found> search(const QString& title, qint64 process) {
    const QRegularExpression expression(title);
    std::vector<Found> found = allWindows(process);
    std::erase_if(found, [&](const Found& one) { return !expression.match(one.title).hasMatch(); });
    return found;
}

void send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

INPUT mouse(DWORD flags, int x = 0, int y = 0, int data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.mouseData = static_cast<DWORD>(data);
    input.mi.dwFlags = flags;
    return input;
}

INPUT movement(const QPoint& place) {
    // The whole screen is 65,536 wide and high, whatever its pixels; the middle of a pixel is meant.
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    return mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (place.x() * 65536 + 32768) / width,
                 (place.y() * 65536 + 32768) / height);
}

INPUT key(WORD code, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

INPUT letter(QChar character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character.unicode();
    input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
    return input;
}

/// The system's code of a key by its X name.
WORD codeOf(const QString& name) {
    static const QHash<QString, WORD> codes{{"Return", VK_RETURN},  {"Tab", VK_TAB},       {"space", VK_SPACE},
                                            {"Escape", VK_ESCAPE},  {"ctrl", VK_CONTROL},  {"shift", VK_SHIFT},
                                            {"alt", VK_MENU},       {"Left", VK_LEFT},     {"Right", VK_RIGHT},
                                            {"Up", VK_UP},          {"Down", VK_DOWN},     {"Home", VK_HOME},
                                            {"End", VK_END},        {"Delete", VK_DELETE}, {"Page_Up", VK_PRIOR},
                                            {"Page_Down", VK_NEXT}, {"BackSpace", VK_BACK}};
    if (codes.contains(name))
        return codes.value(name);
    static const QRegularExpression function(QStringLiteral("^F(\\d+)$"));
    if (const auto match = function.match(name); match.hasMatch())
        return static_cast<WORD>(VK_F1 + match.captured(1).toInt() - 1);
    return name.size() == 1 ? static_cast<WORD>(LOBYTE(VkKeyScanW(name[0].unicode()))) : 0;
}

} // namespace

Desktop::~Desktop() = default;

bool Desktop::start() {
    return true; // the system manages windows itself
}

QList<Desktop::Window> Desktop::windows(const QString& title, qint64 process) {
    QList<Window> result;
    for (const Found& found : search(title, process))
        result.append(found.window);
    return result;
}

std::optional<Desktop::Window> Desktop::window(const QString& title, qint64 process) {
    const QList<Window> found = windows(title, process);
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

int Desktop::countWindows(qint64 process) {
    return static_cast<int>(allWindows(process).size());
}

bool Desktop::isActive(const QString& title, qint64 process) {
    const HWND active = GetForegroundWindow();
    const std::vector<Found> found = search(title, process);
    return std::any_of(found.begin(), found.end(), [active](const Found& one) { return one.handle == active; });
}

void Desktop::activate(const QString& title, qint64 process) {
    const std::vector<Found> found = search(title, process);
    if (!found.empty())
        SetForegroundWindow(found.front().handle);
}

std::optional<QRect> Desktop::activePlace() {
    const HWND active = GetForegroundWindow();
    return active == nullptr ? std::nullopt : std::optional(placeOf(active));
}

void Desktop::moveMouse(const QPoint& place) {
    send({movement(place)});
}

void Desktop::press() {
    send({mouse(MOUSEEVENTF_LEFTDOWN)});
}

void Desktop::release() {
    send({mouse(MOUSEEVENTF_LEFTUP)});
}

void Desktop::click(const QPoint& place) {
    send({movement(place), mouse(MOUSEEVENTF_LEFTDOWN), mouse(MOUSEEVENTF_LEFTUP)});
}

void Desktop::clickRight(const QPoint& place) {
    send({movement(place), mouse(MOUSEEVENTF_RIGHTDOWN), mouse(MOUSEEVENTF_RIGHTUP)});
}

void Desktop::turnWheel(const QPoint& place, bool down) {
    send({movement(place), mouse(MOUSEEVENTF_WHEEL, 0, 0, down ? -WHEEL_DELTA : WHEEL_DELTA)});
}

void Desktop::doubleClick(const QPoint& place) {
    click(place);
    click(place);
}

void Desktop::keys(const QStringList& names) {
    for (const QString& name : names) {
        const QStringList parts = name.split(QLatin1Char('+'));
        for (const QString& part : parts)
            pressKey(part);
        for (auto part = parts.crbegin(); part != parts.crend(); ++part)
            releaseKey(*part);
    }
}

void Desktop::type(const QString& text) {
    for (const QChar character : text)
        send({letter(character, 0), letter(character, KEYEVENTF_KEYUP)});
}

void Desktop::pressKey(const QString& name) {
    send({key(codeOf(name), 0)});
}

void Desktop::releaseKey(const QString& name) {
    send({key(codeOf(name), KEYEVENTF_KEYUP)});
}
