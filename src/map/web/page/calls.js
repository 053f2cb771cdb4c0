'use strict';

// What the program calls, and what the user's actions tell it. Markers are addressed by their place in `marks`; a call
// for one that does not exist changes nothing.
const map = L.map('map', {
    zoomControl: true,
    doubleClickZoom: false,
    worldCopyJump: true,
    minZoom: 1,
    maxZoom: 18,
    maxBounds: [[-85.06, -Infinity], [85.06, Infinity]],
    maxBoundsViscosity: 1,
}).setView([35, 105], 3);
map.attributionControl.setPrefix(false);
words.keep(() => {
    document.title = words.of('在线地图');
    map.getContainer().setAttribute('aria-label', document.title);
    map.zoomControl.getContainer().querySelectorAll('a').forEach((button, i) => {
        button.title = words.of(['放大', '缩小'][i]);
        button.setAttribute('aria-label', button.title);
    });
});
L.control.scale({ imperial: false }).addTo(map);
baseMap.make().addTo(map);

const marks = [];
const pictures = new Map(); // addresses of icons, by the name that the program gave them
const view = { isEditable: true, fitsWhenSeen: false };
const FitZoom = 12; // no closer than this when all markers are brought into view

const carry = new Carry(map, (mark) => {
    link.tell('DragMarkEnd', marks.indexOf(mark), ...position.forBridge(mark.layer.getLatLng()));
});

const fold = new Fold(map, marks);
map.on('zoomend', () => fold.soon());

function markMenu(mark) {
    const index = marks.indexOf(mark);
    const editing = [
        ['设置标记参数', () => link.tell('ManageMarkDialog', index)],
        ['拖动标记', () => carry.begin(mark)],
        ['删除标记', () => link.tell('DeleteMarkFromIndex', index)],
    ];
    return [...(view.isEditable ? editing : []), ['清除报警', () => link.tell('ClearAlarm', index)]];
}

// Told by their own texts, in whichever language they are shown.
const mapMenu = ['添加地图', '打开地图', '关闭地图', '管理地图', '自适应标记点'].map(
    (text) => [text, () => link.tell('OpenManageMapDialog', text)]);

function onMarkKey(mark, event) {
    if (event.key === 'Enter') {
        link.tell('MarkDoubleClicked', marks.indexOf(mark));
    } else if (event.key === 'Delete' && view.isEditable) {
        link.tell('DeleteMarkFromIndex', marks.indexOf(mark));
    }
}

function listenTo(mark) {
    mark.layer.on('dblclick', () => link.tell('MarkDoubleClicked', marks.indexOf(mark)));
    mark.layer.on('contextmenu', (event) => {
        L.DomEvent.stop(event);
        menu.show(markMenu(mark), event.originalEvent.clientX, event.originalEvent.clientY);
    });
    mark.element.addEventListener('keydown', (event) => onMarkKey(mark, event));
}

map.on('dblclick', () => link.tell('WebViewMouseDoubleClicked'));
map.on('contextmenu', (event) => menu.show(mapMenu, event.originalEvent.clientX, event.originalEvent.clientY));
map.on('zoomstart', menu.close);
new ResizeObserver(() => {
    map.invalidateSize({ animate: false });
    if (view.fitsWhenSeen) {
        setAdaptivemarker();
    }
}).observe(map.getContainer());

function withMark(index, act) {
    const mark = marks[index];
    if (mark) {
        act(mark);
    }
}

// The same, when it may change who has room for a label.
function withMarkMoved(index, act) {
    withMark(index, act);
    fold.soon();
}

// --- what is called -----------------------------------------------------------------------------------------------

// `texts` is an object, written as JSON: what the page's own texts are in this language.
function SetWords(language, texts) {
    words.set(language, JSON.parse(texts));
}

// Pictures are handed over once and named in the calls of the markers.
function DefinePicture(name, address) {
    pictures.set(name, address);
}

function pictureOf(name) {
    return pictures.get(name) || name;
}

function reMoveControl() {
    carry.end(true);
    menu.close();
    marks.splice(0).forEach((mark) => mark.layer.remove());
    map.getContainer().classList.remove('tips');
}

function addpoint(lat, lng, text, icon) {
    const mark = new Mark(position.fromCall(lat, lng), text, pictureOf(icon));
    marks.push(mark);
    mark.layer.addTo(map);
    listenTo(mark);
}

function addTipControl() {
    map.getContainer().classList.add('tips');
    fold.soon();
}

function UpdateMarkIcon(index, icon) {
    withMark(index, (mark) => mark.setPicture(pictureOf(icon)));
}

function UpdateMarkPosition(index, lat, lng) {
    withMarkMoved(index, (mark) => {
        carry.forget(mark);
        mark.layer.setLatLng(position.fromCall(lat, lng));
    });
}

function SetMarkisAllwaysShow(index, mode) {
    withMarkMoved(index, (mark) => mark.setShowMode(mode));
}

function UpdateMarkText(index, text) {
    withMark(index, (mark) => {
        mark.setText(text);
        if (mark.room === null) {
            fold.soon();
        }
    });
}

function ShowAlarmMark(index, picture) {
    withMarkMoved(index, (mark) => mark.setAlarm(picture));
}

function removeMarkeFinish(index) {
    withMarkMoved(index, (mark) => {
        carry.forget(mark);
        menu.close();
        mark.layer.remove();
        marks.splice(index, 1);
    });
}

function AddpointFromPixel(x, y) {
    link.tell('OnSendDragMarklnglat', ...position.forBridge(map.containerPointToLatLng([x, y])));
}

function setAdaptivemarker() {
    const size = map.getSize();
    view.fitsWhenSeen = size.x < 16 || size.y < 16; // nothing can be fitted into a page that has no room yet
    if (!view.fitsWhenSeen && marks.length > 0) {
        const box = L.latLngBounds(marks.map((mark) => mark.layer.getLatLng()));
        map.fitBounds(box, { padding: [48, 48], maxZoom: FitZoom, animate: false });
    }
}

// Not animated: a second step would be lost while the first one goes on.
function ZoomIn(x, y) {
    map.setZoomAround(L.point(x, y), map.getZoom() + 1, { animate: false });
}

function Zoomout(x, y) {
    map.setZoomAround(L.point(x, y), map.getZoom() - 1, { animate: false });
}

function BeginDragMark(index) {
    withMark(index, (mark) => carry.begin(mark));
}

function ShowMark(index) {
    withMark(index, (mark) => {
        map.setView(mark.layer.getLatLng(), Math.max(map.getZoom(), 6), { animate: false });
        mark.flash();
    });
}

function SetMapEditable(isEditable) {
    view.isEditable = isEditable;
    if (!isEditable) {
        carry.end(true);
    }
}

// How long a tile is waited for before it is asked for again; each time twice as long as before. ms
const tilePatience = { first: 15000, longest: 300000 };

// A tile that the network has swallowed would be missing until somebody moves the map.
function askAgain(tile) {
    const address = tile.src;
    let waiting = 0;
    const wait = (patience) => {
        waiting = setTimeout(() => {
            if (!tile.isConnected) {
                return;
            }
            // The browser goes on waiting for the same answer unless nobody is left who waits for it.
            tile.removeAttribute('src');
            setTimeout(() => {
                tile.src = address;
                wait(Math.min(2 * patience, tilePatience.longest));
            });
        }, patience);
    };
    tile.addEventListener('load', () => clearTimeout(waiting));
    wait(tilePatience.first);
}

// `template` is the address of tiles with {z}, {x} and {y}, empty for none; `sources` are the servers it means. The map
// that is built in lies below, for where the server has nothing.
function SetTileServer(template, sources) {
    const rule = document.createElement('meta');
    rule.httpEquiv = 'Content-Security-Policy';
    rule.content = `img-src qrc: data: ${sources}`;
    document.head.append(rule);
    if (template !== '') {
        const layer = L.tileLayer(template, { maxZoom: 18, detectRetina: false });
        layer.on('tileloadstart', (event) => askAgain(event.tile));
        layer.addTo(map);
    }
}
