'use strict';

// The map that needs no network: land and borders of Natural Earth, cut into tiles and drawn here, and names of cities.
const baseMap = (() => {
    const Colours = { land: '#eef0f1', coast: '#a9b3ba', border: '#c3b9c6', dot: '#8a9299', text: '#4a5258', halo: '#eef0f1' };
    const Extent = 4096; // units along a tile's edge, as the cutter counts
    const Deepest = 18; // zoom level
    const FineFrom = 6; // zoom level from which the finer shapes are drawn
    const LabelFont = '12px sans-serif';
    const LabelHeight = 16; // px
    const DotRadius = 2; // px

    // Shapes of one fineness: `land` and `borders` cut tiles out.
    const shapes = { coarse: null, fine: null };
    let fineIsWanted = false;

    function readJson(address, take) {
        const request = new XMLHttpRequest();
        request.onload = () => take(JSON.parse(request.responseText));
        request.open('GET', address);
        request.send();
    }

    function cutter(data) {
        return geojsonvt(data, { maxZoom: Deepest, extent: Extent, buffer: 64, tolerance: 3, indexMaxZoom: 4 });
    }

    // Step by step, so that the page answers in between: the finer shapes take a second in all.
    function load(name, address, onDone) {
        readJson(address, (world) => {
            const made = {};
            const steps = [
                () => { made.land = topojson.feature(world, world.objects.land); },
                () => { made.land = cutter(made.land); },
                () => { made.borders = topojson.mesh(world, world.objects.countries, (a, b) => a !== b); },
                () => { made.borders = cutter({ type: 'Feature', properties: {}, geometry: made.borders }); },
                () => { shapes[name] = made; onDone(); },
            ];
            const next = () => {
                steps.shift()();
                if (steps.length > 0) {
                    setTimeout(next);
                }
            };
            next();
        });
    }

    function trace(context, tile, scale, isClosed) {
        context.beginPath();
        for (const feature of tile ? tile.features : []) {
            for (const line of feature.geometry) {
                line.forEach(([x, y], i) => {
                    if (i === 0) {
                        context.moveTo(x * scale, y * scale);
                    } else {
                        context.lineTo(x * scale, y * scale);
                    }
                });
                if (isClosed) {
                    context.closePath();
                }
            }
        }
    }

    const measure = document.createElement('canvas').getContext('2d');
    measure.font = LabelFont;
    const labelsOfZoom = new Map();

    // Which names are seen at a zoom level, and where, in pixels of the whole world: the more important ones first, and
    // none over another. The same for every tile, so that names go on across their edges.
    function labelsAt(zoom) {
        if (labelsOfZoom.has(zoom)) {
            return labelsOfZoom.get(zoom);
        }
        const placed = [];
        for (const [name, lat, lng, rank] of places) {
            if (rank > Math.max(1, zoom - 2)) {
                continue;
            }
            const at = L.CRS.EPSG3857.latLngToPoint(L.latLng(lat, lng), zoom);
            const box = {
                name, x: at.x, y: at.y, left: at.x - DotRadius, right: at.x + 6 + measure.measureText(name).width,
                top: at.y - LabelHeight / 2, bottom: at.y + LabelHeight / 2,
            };
            const isFree = placed.every((other) => box.left > other.right + 8 || box.right + 8 < other.left ||
                box.top > other.bottom || box.bottom < other.top);
            if (isFree) {
                placed.push(box);
            }
        }
        labelsOfZoom.set(zoom, placed);
        return placed;
    }

    function drawLabels(context, coords, size) {
        context.font = LabelFont;
        context.textBaseline = 'middle';
        context.lineJoin = 'round';
        const left = coords.x * size;
        const top = coords.y * size;
        for (const label of labelsAt(coords.z)) {
            if (label.right < left || label.left > left + size || label.bottom < top || label.top > top + size) {
                continue;
            }
            context.beginPath();
            context.arc(label.x - left, label.y - top, DotRadius, 0, 2 * Math.PI);
            context.fillStyle = Colours.dot;
            context.fill();
            context.lineWidth = 3;
            context.strokeStyle = Colours.halo;
            context.strokeText(label.name, label.x - left + 6, label.y - top);
            context.fillStyle = Colours.text;
            context.fillText(label.name, label.x - left + 6, label.y - top);
        }
    }

    function drawTile(canvas, coords, size) {
        const sharpness = window.devicePixelRatio || 1;
        canvas.width = size * sharpness;
        canvas.height = size * sharpness;
        const context = canvas.getContext('2d');
        context.scale(sharpness, sharpness);
        const set = (coords.z >= FineFrom && shapes.fine) || shapes.coarse;
        if (set) {
            const scale = size / Extent;
            trace(context, set.land.getTile(coords.z, coords.x, coords.y), scale, true);
            context.fillStyle = Colours.land;
            context.fill('evenodd');
            context.lineWidth = 1;
            context.strokeStyle = Colours.coast;
            context.stroke();
            trace(context, set.borders.getTile(coords.z, coords.x, coords.y), scale, false);
            context.strokeStyle = Colours.border;
            context.stroke();
        }
        drawLabels(context, coords, size);
    }

    const Layer = L.GridLayer.extend({
        options: { attribution: 'Natural Earth' },

        onAdd(map) {
            L.GridLayer.prototype.onAdd.call(this, map);
            load('coarse', 'countries-50m.json', () => this.redraw());
            map.on('zoomend', () => this.refine(map));
        },

        refine(map) {
            if (!fineIsWanted && map.getZoom() >= FineFrom) {
                fineIsWanted = true;
                load('fine', 'countries-10m.json', () => this.redraw());
            }
        },

        createTile(coords) {
            const tile = L.DomUtil.create('canvas', 'leaflet-tile');
            drawTile(tile, coords, this.getTileSize().x);
            return tile;
        },
    });

    // `hasShapes` tells whether land is drawn yet.
    return { make: () => new Layer(), hasShapes: () => shapes.coarse !== null };
})();
