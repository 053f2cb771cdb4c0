'use strict';

// In which order a position is written: calls of the program bring latitude, then longitude; the bridge is told
// longitude, then latitude ("lnglat"). Nothing else in the page takes a position apart.
const position = {
    fromCall(lat, lng) {
        const isNumber = Number.isFinite(lat) && Number.isFinite(lng);
        return isNumber ? L.latLng(lat, lng) : L.latLng(0, 0);
    },

    // Of the world that is drawn several times side by side, the one from 180 degrees west to 180 degrees east.
    forBridge(latLng) {
        const inWorld = latLng.wrap();
        const lat = Math.min(90, Math.max(-90, inWorld.lat));
        return [inWorld.lng, lat];
    },
};
