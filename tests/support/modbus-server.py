#!/usr/bin/python3
"""A Modbus TCP server on a free port of the loopback, which it prints as "PORT <number>".

Lines on its standard input: "set ADDRESS VALUE" writes a holding register. Of coil 0 it prints "COIL <value>" whenever
that changes. It ends with its standard input.
"""

import asyncio
import sys

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server.async_io import ModbusTcpServer

COILS, HOLDING_REGISTERS = 1, 3


async def serve():
    slave = ModbusSlaveContext(
        co=ModbusSequentialDataBlock(0, [0] * 16), hr=ModbusSequentialDataBlock(0, [0] * 16), zero_mode=True)
    server = ModbusTcpServer(ModbusServerContext(slaves=slave, single=True), address=("127.0.0.1", 0))
    serving = asyncio.ensure_future(server.serve_forever())
    await server.serving
    print("PORT", server.server.sockets[0].getsockname()[1], flush=True)
    watching = asyncio.ensure_future(watch(slave))

    reader = asyncio.StreamReader()
    loop = asyncio.get_running_loop()
    await loop.connect_read_pipe(lambda: asyncio.StreamReaderProtocol(reader), sys.stdin)
    while line := await reader.readline():
        word, address, value = line.split()
        assert word == b"set"
        slave.setValues(HOLDING_REGISTERS, int(address), [int(value)])
    watching.cancel()
    serving.cancel()


async def watch(slave):
    before = None
    while True:
        value = int(slave.getValues(COILS, 0, 1)[0])
        if value != before:
            print("COIL", value, flush=True)
            before = value
        await asyncio.sleep(0.02)


try:
    asyncio.run(serve())
except asyncio.CancelledError:
    pass
