// A Modbus slave: "modbus_slave tcp" on a free port of the loopback, which it prints, or "modbus_slave rtu DEVICE".
// Lines on its standard input say how it answers from then on: "normal", "late", "short", "silent".

#include <modbus/modbus.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

std::atomic<char> mode{'n'};

void fill(modbus_mapping_t& map) {
    const std::array<std::uint16_t, 16> words = {0x3FC0, 0x0000, 0x0000, 0x3FC0, 0xC03F, 0x0000, 0x0000, 0xC03F,
                                                 0xFFFE, 0x3412, 0xFFFF, 0xFFFE, 0xFFFE, 0xFFFF, 0x1234, 0x5678};
    for (std::size_t i = 0; i < words.size(); ++i)
        map.tab_registers[10 + i] = words[i];
    map.tab_registers[0] = 0x1234;
    map.tab_input_registers[0] = 777;
    map.tab_bits[3] = 1;
    map.tab_input_bits[5] = 1;
}

void answer(modbus_t* link, const std::vector<std::uint8_t>& query, int length, modbus_mapping_t& map) {
    if (mode == 's')
        return;
    if (mode == 'l')
        std::this_thread::sleep_for(std::chrono::milliseconds(900));
    if (mode == 'c') {
        // The beginning of an answer, and no more.
        const std::array<std::uint8_t, 8> part = {query[0], query[1], 0, 0, 0, 7, query[6], query[7]};
        if (write(modbus_get_socket(link), part.data(), part.size()) < 0)
            std::perror("write");
        return;
    }
    modbus_reply(link, query.data(), length, &map);
}

void serve(modbus_t* link, modbus_mapping_t& map) {
    std::vector<std::uint8_t> query(MODBUS_TCP_MAX_ADU_LENGTH);
    int length = 0;
    while ((length = modbus_receive(link, query.data())) != -1) {
        if (length > 0)
            answer(link, query, length, map);
    }
}

void listen(modbus_t* link, modbus_mapping_t& map) {
    int socket = modbus_tcp_listen(link, 8);
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    std::cout << ntohs(address.sin_port) << std::endl;
    while (modbus_tcp_accept(link, &socket) >= 0) {
        serve(link, map);
        modbus_close(link);
    }
}

} // namespace

int main(int argc, char** argv) {
    const bool tcp = argc == 2;
    modbus_t* const link = tcp ? modbus_new_tcp("127.0.0.1", 0) : modbus_new_rtu(argv[2], 9600, 'N', 8, 1);
    modbus_mapping_t* const map = modbus_mapping_new(100, 100, 100, 100);
    if (link == nullptr || map == nullptr)
        return 1;
    fill(*map);
    std::thread([] {
        for (std::string line; std::getline(std::cin, line);)
            mode = line == "short" ? 'c' : line.empty() ? 'n' : line.front();
        std::_Exit(0);
    }).detach();
    if (tcp) {
        listen(link, *map);
        return 0;
    }
    modbus_set_slave(link, 7);
    if (modbus_connect(link) != 0)
        return 1;
    std::cout << "ready" << std::endl;
    while (true)
        serve(link, *map);
}
