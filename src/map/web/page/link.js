'use strict';

// The program's object "bridge". What the user does before the channel stands is told as soon as it does.
const link = (() => {
    let bridge = null;
    const waiting = [];

    new QWebChannel(qt.webChannelTransport, (channel) => {
        bridge = channel.objects.bridge;
        for (const tell of waiting.splice(0)) {
            tell(bridge);
        }
    });

    // Calls a slot of the bridge by its name.
    return {
        tell(slot, ...values) {
            const call = (object) => object[slot](...values);
            if (bridge) {
                call(bridge);
            } else {
                waiting.push(call);
            }
        },
    };
})();
