#!/usr/bin/python3
"""A network camera for tests that speaks ONVIF, on loopback only. Standard library alone.

Prints "PORT n" and "UDP n" (where it hears searches) once it serves, then one line "CALL {json}" for every operation
that it has carried out, and ends when its standard input is closed, so that a test that dies takes it along.

It looks at requests as strictly as a camera may: every element by its namespace, password digests computed anew, each
nonce taken once, the time of a digest at most a minute away from its own clock. What is wrong with a request that it
refuses stands in the fault's reason.

Modes (--mode, may stand several times):
  unauthorized  a wrong password is refused with 401 instead of 400       http-digest  wants HTTP's own digest
  local-time    tells a time hours off and judges by the right one        own-time     no time that is told or right is taken
  expired       names a time that is off wsu:MessageExpired               no-date      refuses to tell its time
  unsupported   knows no GetProfiles                                      old          knows no GetServices
  no-media, no-ptz, no-imaging  lacks the service                         no-profiles  has no profiles
  h265          has no H.264 stream                                       http-stream  tells an http address as a stream's
  other-host    tells addresses on a host that cannot be reached          viewer       the account may not change anything
  prefixes      other prefixes, default namespaces                        wrong-space  right names in a wrong namespace
  named-presets presets have tokens that are no numbers                   no-relates   answers searches of nobody
  garbage, empty, hang, huge, deep, doctype, html, redirect, short, not-http: answers to every request
"""

import argparse
import base64
import hashlib
import html
import http.server
import io
import json
import re
import secrets
import socket
import struct
import sys
import threading
import time
import xml.etree.ElementTree as ET
from datetime import datetime, timedelta, timezone

SOAP = "http://www.w3.org/2003/05/soap-envelope"
WSSE = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd"
WSU = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd"
DIGEST = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-username-token-profile-1.0#PasswordDigest"
TER = "http://www.onvif.org/ver10/error"
TT = "http://www.onvif.org/ver10/schema"
TDS = "http://www.onvif.org/ver10/device/wsdl"
TRT = "http://www.onvif.org/ver10/media/wsdl"
TPTZ = "http://www.onvif.org/ver20/ptz/wsdl"
TIMG = "http://www.onvif.org/ver20/imaging/wsdl"
DN = "http://www.onvif.org/ver10/network/wsdl"
WSA = "http://schemas.xmlsoap.org/ws/2004/08/addressing"
WSD = "http://schemas.xmlsoap.org/ws/2005/04/discovery"
GROUP = "239.255.255.250"

USUAL = {SOAP: "env", TT: "tt", TDS: "tds", TRT: "trt", TPTZ: "tptz", TIMG: "timg", TER: "ter", WSSE: "wsse", WSU: "wsu"}
OTHER = {SOAP: "a", TT: "tds", TDS: "tt", TRT: "x", TPTZ: "y-1", TIMG: "z.z", TER: "e", WSSE: "w", WSU: "u"}
# What a camera answers without a password.
OPEN = {"GetSystemDateAndTime", "GetServices", "GetCapabilities"}
CHANGES = {"SetImagingSettings", "ContinuousMove", "SetPreset", "RemovePreset"}


class Refused(Exception):
    def __init__(self, code, reason, space=TER, status=400):
        super().__init__(reason)
        self.code, self.reason, self.space, self.status = code, reason, space, status


class Camera:
    """What the camera is and does; one lock for all of it."""

    def __init__(self, options):
        self.options = options
        self.modes = set(options.mode)
        self.lock = threading.Lock()
        self.nonces = set()
        self.challenge = secrets.token_hex(8)
        self.port = 0
        self.asked_port = ""  # at which the present request was asked, which is told as its own
        self.place = {"x": 0.25, "y": -0.5, "zoom": 0.5}
        self.moving = False
        self.presets = {"1": "Gate", "7": "Yard"}
        if "named-presets" in self.modes:
            self.presets = {"preset-b": "Gate", "preset-a": "Yard"}
        self.image = {"Brightness": 50.0, "ColorSaturation": 0.0, "Contrast": 100.0, "Sharpness": 2.0}

    def now(self):
        return datetime.now(timezone.utc) + timedelta(seconds=self.options.skew)

    def record(self, operation, **arguments):
        print("CALL " + json.dumps({"op": operation, **arguments}), flush=True)

    # -- requests ------------------------------------------------------------------------------------------------

    def answer(self, body, path, authorization):
        """The markup inside the answer's body, with {uri} in place of prefixes."""
        root = parse(body)
        if root.tag != q(SOAP, "Envelope"):
            raise Refused("WellFormed", "no envelope")
        inner = root.find(q(SOAP, "Body"))
        if inner is None or len(inner) != 1:
            raise Refused("WellFormed", "a body with one operation is wanted")
        request = inner[0]
        space, name = request.tag[1:].split("}")
        served = {TDS: "/onvif/device_service", TRT: "/onvif/media", TPTZ: "/onvif/ptz", TIMG: "/onvif/imaging"}
        if served.get(space) != path:
            raise Refused("ActionNotSupported", f"{name} is not served here")
        if name not in OPEN or "no-date" in self.modes:
            self.check_password(root, authorization)
            if "viewer" in self.modes and name in CHANGES:
                raise Refused("NotAuthorized", "this account may only watch")
        handler = getattr(self, f"on_{served[space].rsplit('/', 1)[1].replace('_service', '')}_{name}", None)
        if handler is None or ("unsupported" in self.modes and name == "GetProfiles"):
            raise Refused("ActionNotSupported", f"the camera knows no {name}", status=500)
        return handler(request)

    def check_password(self, root, authorization):
        options = self.options
        if not options.user:
            return
        if "http-digest" in self.modes:
            self.check_http_digest(authorization)
            return
        status = 401 if "unauthorized" in self.modes else 400
        token = root.find(f"{q(SOAP, 'Header')}/{q(WSSE, 'Security')}/{q(WSSE, 'UsernameToken')}")
        if token is None:
            raise Refused("NotAuthorized", "no user name", status=status)
        password = token.find(q(WSSE, "Password"))
        nonce = token.findtext(q(WSSE, "Nonce"), "")
        created = token.findtext(q(WSU, "Created"), "")
        if password is None or password.get("Type") != DIGEST:
            raise Refused("NotAuthorized", "a password digest is wanted", status=status)
        sha = hashlib.sha1(base64.b64decode(nonce, validate=True) + created.encode() + options.password.encode())
        right = base64.b64encode(sha.digest()).decode()
        if token.findtext(q(WSSE, "Username")) != options.user or password.text != right:
            raise Refused("NotAuthorized", "user name or password are wrong", status=status)
        if nonce in self.nonces:
            raise Refused("NotAuthorized", "this nonce was used before", status=status)
        self.nonces.add(nonce)
        at = datetime.strptime(created, "%Y-%m-%dT%H:%M:%SZ").replace(tzinfo=timezone.utc)
        clock = datetime.now(timezone.utc) if "local-time" in self.modes else self.now()
        if "own-time" in self.modes:
            clock += timedelta(days=400)
        if abs((at - clock).total_seconds()) > 60:
            if "expired" in self.modes:
                raise Refused("MessageExpired", "the message is too old", space=WSU)
            raise Refused("NotAuthorized", "the time is wrong", status=status)

    def check_http_digest(self, authorization):
        fields = dict(re.findall(r'(\w+)="?([^",]+)"?', authorization or ""))

        def md5(*parts):
            return hashlib.md5(":".join(parts).encode()).hexdigest()

        if fields.get("nonce") != self.challenge or fields.get("username") != self.options.user:
            raise Refused("challenge", "", status=401)
        secret = md5(self.options.user, "camera", self.options.password)
        right = md5(secret, self.challenge, fields["nc"], fields["cnonce"], "auth", md5("POST", fields["uri"]))
        once = (fields["nc"], fields["cnonce"])
        if fields["response"] != right or once in self.nonces:
            raise Refused("challenge", "", status=401)
        self.nonces.add(once)

    # -- device --------------------------------------------------------------------------------------------------

    def on_device_GetSystemDateAndTime(self, _request):
        at = self.now()
        date = f"<{{{TT}}}Time><{{{TT}}}Hour>{at.hour}</><{{{TT}}}Minute>{at.minute}</>" \
               f"<{{{TT}}}Second>{at.second}</></><{{{TT}}}Date><{{{TT}}}Year>{at.year}</>" \
               f"<{{{TT}}}Month>{at.month}</><{{{TT}}}Day>{at.day}</></>"
        return f"<{{{TDS}}}GetSystemDateAndTimeResponse><{{{TDS}}}SystemDateAndTime><{{{TT}}}DateTimeType>Manual</>" \
               f"<{{{TT}}}UTCDateTime>{date}</></></>"

    def services(self):
        host = "192.0.2.1" if "other-host" in self.modes else "127.0.0.1"
        base = f"http://{host}:{self.asked_port or self.port}/onvif/"
        all_ = {TDS: "device_service", TRT: "media", TPTZ: "ptz", TIMG: "imaging"}
        missing = {TRT: "no-media", TPTZ: "no-ptz", TIMG: "no-imaging"}
        return {space: base + path for space, path in all_.items() if missing.get(space) not in self.modes}

    def on_device_GetServices(self, request):
        if "old" in self.modes:
            raise Refused("ActionNotSupported", "the camera knows no GetServices")
        if request.findtext(q(TDS, "IncludeCapability")) not in ("true", "false"):
            raise Refused("InvalidArgVal", "IncludeCapability is wanted")
        rows = "".join(
            f"<{{{TDS}}}Service><{{{TDS}}}Namespace>{space}</><{{{TDS}}}XAddr>{url}</></>"
            for space, url in self.services().items())
        return f"<{{{TDS}}}GetServicesResponse>{rows}</>"

    def on_device_GetCapabilities(self, _request):
        names = {TDS: "Device", TRT: "Media", TPTZ: "PTZ", TIMG: "Imaging"}
        rows = "".join(f"<{{{TT}}}{names[space]}><{{{TT}}}XAddr>{url}</></>" for space, url in self.services().items())
        return f"<{{{TDS}}}GetCapabilitiesResponse><{{{TDS}}}Capabilities>{rows}</></>"

    def on_device_GetDeviceInformation(self, _request):
        told = {"Manufacturer": "Stand-in", "Model": "SI-1 <dome>", "FirmwareVersion": "1.2.3", "SerialNumber": "0042"}
        return f"<{{{TDS}}}GetDeviceInformationResponse>" + "".join(
            f"<{{{TDS}}}{name}>{html.escape(text)}</>" for name, text in told.items()) + "</>"

    # -- media ---------------------------------------------------------------------------------------------------

    def profiles(self):
        """token: (name, codec, width, height, rate, path)"""
        if "no-profiles" in self.modes:
            return {}
        codec = "H265" if "h265" in self.modes else "H264"
        return {"small & <light>": ("Light", codec, 320, 240, 15, "/live"),
                "still": ("Still", "JPEG", 3840, 2160, 1, "/mjpeg"),
                "large": ("Main", codec, 1920, 1080, 25, "/bare")}

    def on_media_GetProfiles(self, _request):
        rows = ""
        for token, (name, codec, width, height, rate, _path) in self.profiles().items():
            source = f"<{{{TT}}}VideoSourceConfiguration token='vs'><{{{TT}}}SourceToken>lens</></>"
            encoder = f"<{{{TT}}}VideoEncoderConfiguration token='ve'><{{{TT}}}Encoding>{codec}</><{{{TT}}}Resolution>" \
                      f"<{{{TT}}}Width>{width}</><{{{TT}}}Height>{height}</></><{{{TT}}}RateControl>" \
                      f"<{{{TT}}}FrameRateLimit>{rate}</></></>"
            ptz = f"<{{{TT}}}PTZConfiguration token='move'><{{{TT}}}NodeToken>neck</></>"
            rows += f"<{{{TRT}}}Profiles token='{html.escape(token)}' fixed='true'><{{{TT}}}Name>{name}</>{source}{encoder}"
            rows += ("" if "no-ptz" in self.modes or token == "still" else ptz) + "</>"
        return f"<{{{TRT}}}GetProfilesResponse>{rows}</>"

    def on_media_GetStreamUri(self, request):
        setup = request.find(q(TRT, "StreamSetup"))
        wanted = (q(TT, "Stream"), "RTP-Unicast"), (f"{q(TT, 'Transport')}/{q(TT, 'Protocol')}", "RTSP")
        if setup is None or any(setup.findtext(path) != text for path, text in wanted):
            raise Refused("InvalidStreamSetup", "this way of streaming is not known")
        path = self.profiles()[self.profile_of(request, TRT)][5]
        host = "192.0.2.1" if "other-host" in self.modes else "127.0.0.1"
        scheme = "http" if "http-stream" in self.modes else "rtsp"
        url = f"{scheme}://{host}:{self.options.rtsp}{path}"
        return f"<{{{TRT}}}GetStreamUriResponse><{{{TRT}}}MediaUri><{{{TT}}}Uri>{url}</>" \
               f"<{{{TT}}}InvalidAfterConnect>false</><{{{TT}}}Timeout>PT0S</></></>"

    def profile_of(self, request, space):
        token = request.findtext(q(space, "ProfileToken"))
        if token not in self.profiles():
            raise Refused("NoProfile", "there is no such profile")
        return token

    # -- movement ------------------------------------------------------------------------------------------------

    def on_ptz_GetNodes(self, _request):
        def span(name, low, high):
            return f"<{{{TT}}}{name}><{{{TT}}}Min>{low}</><{{{TT}}}Max>{high}</></>"

        spaces = ""
        for name, ranges in (("AbsolutePanTiltPositionSpace", (("XRange", -1, 1), ("YRange", -2, 2))),
                             ("AbsoluteZoomPositionSpace", (("XRange", 0, 1),)),
                             ("ContinuousPanTiltVelocitySpace", (("XRange", -1, 1), ("YRange", -0.5, 0.5))),
                             ("ContinuousZoomVelocitySpace", (("XRange", -1, 1),))):
            spaces += f"<{{{TT}}}{name}><{{{TT}}}URI>http://www.onvif.org/</>" + "".join(
                span(*each) for each in ranges) + "</>"
        return f"<{{{TPTZ}}}GetNodesResponse><{{{TPTZ}}}PTZNode token='neck'><{{{TT}}}SupportedPTZSpaces>{spaces}</>" \
               f"<{{{TT}}}MaximumNumberOfPresets>255</><{{{TT}}}HomeSupported>true</></></>"

    def on_ptz_GetConfigurationOptions(self, request):
        if request.findtext(q(TPTZ, "ConfigurationToken")) != "move":
            raise Refused("NoConfig", "there is no such configuration")
        return f"<{{{TPTZ}}}GetConfigurationOptionsResponse><{{{TPTZ}}}PTZConfigurationOptions><{{{TT}}}PTZTimeout>" \
               f"<{{{TT}}}Min>PT1S</><{{{TT}}}Max>PT8S</></></></>"

    def on_ptz_ContinuousMove(self, request):
        self.profile_of(request, TPTZ)
        timeout = request.findtext(q(TPTZ, "Timeout"), "PT8S")
        match = re.fullmatch(r"PT(\d+(?:\.\d+)?)S", timeout)
        if match is None or not 1 <= float(match[1]) <= 8:
            raise Refused("TimeoutNotSupported", f"the time limit {timeout} is not taken")
        velocity = request.find(q(TPTZ, "Velocity"))
        turn, zoom = velocity.find(q(TT, "PanTilt")), velocity.find(q(TT, "Zoom"))
        told = {"pan": float(turn.get("x")), "tilt": float(turn.get("y")), "zoom": float(zoom.get("x"))}
        if abs(told["pan"]) > 1 or abs(told["tilt"]) > 0.5 or abs(told["zoom"]) > 1:
            raise Refused("InvalidVelocity", "too fast")
        self.moving = True
        self.record("ContinuousMove", **told)
        return f"<{{{TPTZ}}}ContinuousMoveResponse/>"

    def on_ptz_Stop(self, request):
        self.profile_of(request, TPTZ)
        self.moving = False
        self.record("Stop")
        return f"<{{{TPTZ}}}StopResponse/>"

    def on_ptz_GotoHomePosition(self, request):
        self.profile_of(request, TPTZ)
        self.record("GotoHomePosition")
        return f"<{{{TPTZ}}}GotoHomePositionResponse/>"

    def on_ptz_GetStatus(self, request):
        self.profile_of(request, TPTZ)
        state = "MOVING" if self.moving else "IDLE"
        place = self.place
        return f"<{{{TPTZ}}}GetStatusResponse><{{{TPTZ}}}PTZStatus><{{{TT}}}Position><{{{TT}}}PanTilt x='{place['x']}'" \
               f" y='{place['y']}'/><{{{TT}}}Zoom x='{place['zoom']}'/></><{{{TT}}}MoveStatus><{{{TT}}}PanTilt>{state}</>" \
               f"<{{{TT}}}Zoom>IDLE</></></></>"

    def on_ptz_GetPresets(self, request):
        self.profile_of(request, TPTZ)
        rows = "".join(f"<{{{TPTZ}}}Preset token='{token}'><{{{TT}}}Name>{html.escape(name)}</></>"
                       for token, name in self.presets.items())
        return f"<{{{TPTZ}}}GetPresetsResponse>{rows}</>"

    def on_ptz_SetPreset(self, request):
        self.profile_of(request, TPTZ)
        token, name = request.findtext(q(TPTZ, "PresetToken")), request.findtext(q(TPTZ, "PresetName"))
        if token is None:
            token = f"preset-{len(self.presets)}"
        elif token not in self.presets and ("named-presets" in self.modes or not token.isdigit()):
            raise Refused("NoToken", "there is no such preset")
        self.presets[token] = name
        self.record("SetPreset", token=token, name=name)
        return f"<{{{TPTZ}}}SetPresetResponse><{{{TPTZ}}}PresetToken>{token}</></>"

    def known_preset(self, request):
        self.profile_of(request, TPTZ)
        token = request.findtext(q(TPTZ, "PresetToken"))
        if token not in self.presets:
            raise Refused("NoToken", "there is no such preset")
        return token

    def on_ptz_GotoPreset(self, request):
        self.record("GotoPreset", token=self.known_preset(request))
        return f"<{{{TPTZ}}}GotoPresetResponse/>"

    def on_ptz_RemovePreset(self, request):
        token = self.known_preset(request)
        del self.presets[token]
        self.record("RemovePreset", token=token)
        return f"<{{{TPTZ}}}RemovePresetResponse/>"

    # -- picture -------------------------------------------------------------------------------------------------

    LIMITS = {"Brightness": (0, 100), "ColorSaturation": (-10, 10), "Contrast": (0, 255), "Sharpness": (0, 4)}

    def lens(self, request):
        if request.findtext(q(TIMG, "VideoSourceToken")) != "lens":
            raise Refused("NoSource", "there is no such lens")

    def on_imaging_GetOptions(self, request):
        self.lens(request)
        rows = "".join(f"<{{{TT}}}{name}><{{{TT}}}Min>{low}</><{{{TT}}}Max>{high}</></>"
                       for name, (low, high) in self.LIMITS.items())
        return f"<{{{TIMG}}}GetOptionsResponse><{{{TIMG}}}ImagingOptions>{rows}</></>"

    def on_imaging_GetImagingSettings(self, request):
        self.lens(request)
        rows = "".join(f"<{{{TT}}}{name}>{value}</>" for name, value in self.image.items())
        return f"<{{{TIMG}}}GetImagingSettingsResponse><{{{TIMG}}}ImagingSettings>{rows}</></>"

    def on_imaging_SetImagingSettings(self, request):
        self.lens(request)
        told = {each.tag: float(each.text) for each in request.find(q(TIMG, "ImagingSettings"))}
        order = [q(TT, name) for name in self.LIMITS]
        if [tag for tag in order if tag in told] != list(told):
            raise Refused("SettingsInvalid", "these settings do not come in their order")
        values = {tag.split("}")[1]: value for tag, value in told.items()}
        if any(not self.LIMITS[name][0] <= value <= self.LIMITS[name][1] for name, value in values.items()):
            raise Refused("SettingsInvalid", "a setting is out of its range")
        self.image.update(values)
        self.record("SetImagingSettings", **values)
        return f"<{{{TIMG}}}SetImagingSettingsResponse/>"

    def on_imaging_GetMoveOptions(self, request):
        self.lens(request)
        return f"<{{{TIMG}}}GetMoveOptionsResponse><{{{TIMG}}}MoveOptions><{{{TT}}}Continuous><{{{TT}}}Speed>" \
               f"<{{{TT}}}Min>-5</><{{{TT}}}Max>5</></></></></>"

    def on_imaging_Move(self, request):
        self.lens(request)
        speed = request.findtext(f"{q(TIMG, 'Focus')}/{q(TT, 'Continuous')}/{q(TT, 'Speed')}")
        self.record("FocusMove", speed=float(speed))
        return f"<{{{TIMG}}}MoveResponse/>"

    def on_imaging_Stop(self, request):
        self.lens(request)
        self.record("FocusStop")
        return f"<{{{TIMG}}}StopResponse/>"


def q(space, name):
    return f"{{{space}}}{name}"


def parse(text):
    try:
        return ET.fromstring(text)
    except ET.ParseError as error:
        raise Refused("WellFormed", f"no XML: {error}") from error


def written(markup, prefixes, default=None):
    """Markup with {uri} for prefixes and bare closing tags becomes XML; `default` is written without a prefix."""
    result, closing = [], []
    for part in re.split(r"(<[^>]*>)", markup):
        if part == "</>":
            result.append(f"</{closing.pop()}>")
        elif part.startswith("<{"):
            space, rest = re.fullmatch(r"<\{([^}]*)\}(.*)>", part, re.S).groups()
            name = re.match(r"\w+", rest)[0]
            full = name if space == default else f"{prefixes[space]}:{name}"
            result.append(f"<{full}{rest[len(name):]}>")
            if not rest.endswith("/"):
                closing.append(full)
        else:
            result.append(part)
    return "".join(result)


def envelope(markup, modes):
    prefixes = OTHER if "prefixes" in modes else USUAL
    default = TT if "prefixes" in modes else None
    spaces = {uri: uri for uri in prefixes}
    if "wrong-space" in modes:
        spaces[TDS] = "http://www.example.org/device"
    declared = " ".join(f'xmlns:{prefix}="{spaces[uri]}"' for uri, prefix in prefixes.items() if uri != default)
    text = written(f"<{{{SOAP}}}Envelope {declared}><{{{SOAP}}}Header/><{{{SOAP}}}Body>{markup}</></>", prefixes, default)
    if default:
        text = re.sub(r"^(<\S+)", rf'\1 xmlns="{default}"', text, count=1)
    return '<?xml version="1.0" encoding="utf-8"?>\n<!-- a camera -->\n' + text


def fault(refused, modes):
    prefixes = OTHER if "prefixes" in modes else USUAL
    # The reason holds what must not become more than one plain line.
    reason = html.escape(refused.reason) + "\n\t&lt;b&gt;"
    return (f"<{{{SOAP}}}Fault><{{{SOAP}}}Code><{{{SOAP}}}Value>{prefixes[SOAP]}:Sender</><{{{SOAP}}}Subcode>"
            f"<{{{SOAP}}}Value>{prefixes[refused.space]}:{refused.code}</></></>"
            f"<{{{SOAP}}}Reason><{{{SOAP}}}Text xml:lang='en'>{reason}</></></>")


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    camera = None

    def log_message(self, *_arguments):
        pass

    def send(self, status, body, kind="application/soap+xml; charset=utf-8", **headers):
        data = body.encode()
        self.send_response(status)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(data)))
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()
        self.wfile.write(data)

    def do_POST(self):
        camera = self.camera
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        if self.misbehave(camera.modes):
            return
        try:
            with camera.lock:
                camera.asked_port = self.headers.get("Host", "").partition(":")[2]
                markup = camera.answer(body, self.path, self.headers.get("Authorization"))
            self.send(200, envelope(markup, camera.modes))
        except Refused as refused:
            if refused.code == "challenge":
                challenge = f'Digest realm="camera", qop="auth", nonce="{camera.challenge}"'
                self.send(401, "", WWW_Authenticate=challenge)
            else:
                self.send(refused.status, envelope(fault(refused, camera.modes), camera.modes))

    def misbehave(self, modes):
        if "hang" in modes:
            time.sleep(3600)
        elif "short" in modes:
            self.send_response(200)
            self.send_header("Content-Length", "1000")
            self.end_headers()
            self.wfile.write(b"<a>")
            self.close_connection = True
        elif "not-http" in modes:
            self.wfile.write(b"SSH-2.0-camera\r\n" * 20)
            self.close_connection = True
        elif "redirect" in modes:
            self.send(302, "", Location="http://192.0.2.1/onvif/device_service")
        elif "html" in modes:
            self.send(404, "<html><body>not found</body></html>", "text/html")
        else:
            texts = {"garbage": "\x00\xff]]>not xml", "empty": "", "huge": "<a>" + "x" * (3 << 20) + "</a>",
                     "deep": "<a>" * 100000 + "</a>" * 100000,
                     "doctype": '<!DOCTYPE a [<!ENTITY b "c">]>' + envelope("", set()).split("?>", 1)[1]}
            found = modes & set(texts)
            if not found:
                return False
            self.send(200, texts[found.pop()])
        return True


# -- searches ----------------------------------------------------------------------------------------------------


def sought(datagram):
    """The message id of a search that means this camera, else None."""
    spaces = {}
    root = None
    for event, value in ET.iterparse(io.BytesIO(datagram), events=("start-ns", "start")):
        if event == "start-ns":
            spaces[value[0]] = value[1]
        else:
            root = value if root is None else root
    header, body = root.find(q(SOAP, "Header")), root.find(q(SOAP, "Body"))
    action = header.findtext(q(WSA, "Action"), "").strip()
    to = header.findtext(q(WSA, "To"), "").strip()
    if action != WSD + "/Probe" or to != "urn:schemas-xmlsoap-org:ws:2005:04:discovery":
        return None
    mine = {(TDS, "Device"), (DN, "NetworkVideoTransmitter")}
    for each in body.findtext(f"{q(WSD, 'Probe')}/{q(WSD, 'Types')}", "").split():
        prefix, _, local = each.rpartition(":")
        if (spaces.get(prefix), local) not in mine:
            return None
    return header.findtext(q(WSA, "MessageID"))


def match(uuid, relates, url, types="n:NetworkVideoTransmitter v:Device"):
    return f"""<?xml version="1.0"?><q:Envelope xmlns:q="{SOAP}" xmlns:h="{WSA}" xmlns="{WSD}" xmlns:n="{DN}"
      xmlns:v="{TDS}"><q:Header><h:RelatesTo>{relates}</h:RelatesTo><h:Action>{WSD}/ProbeMatches</h:Action></q:Header>
      <q:Body><ProbeMatches><ProbeMatch><h:EndpointReference><h:Address>urn:uuid:{uuid}</h:Address></h:EndpointReference>
      <Types>{types}</Types><Scopes>onvif://www.onvif.org/type/video_encoder onvif://www.onvif.org/name/Front%20%C3%A9
      onvif://www.onvif.org/hardware/SI-1 onvif://www.onvif.org/MAC/00:11:22:AA:BB:CC</Scopes>
      <XAddrs>{url}</XAddrs><MetadataVersion>1</MetadataVersion></ProbeMatch></ProbeMatches></q:Body></q:Envelope>"""


def answer_searches(camera, hearing):
    path = f":{camera.port}/onvif/device_service"
    while True:
        datagram, sender = hearing.recvfrom(65536)
        try:
            message = sought(datagram)
        except (ET.ParseError, AttributeError, UnicodeError):
            continue
        if message is None:
            continue
        url = f"http://127.0.0.1{path}"
        # First what must be passed over, as a hostile neighbour sends it.
        answers = [b"", b"\xff" * 60000, b"<a>" * 15000,
                   match("0-stranger", "urn:uuid:00000000-0000-4000-8000-000000000000", url),
                   match("0-printer", message, url, "n:Printer"), match("0-nowhere", message, "file:///etc/passwd"),
                   match("../../0-path", message, url), match("0-cut", message, url)[:-40],
                   '<!DOCTYPE a [<!ENTITY e "f">]>' + match("0-entity", message, url).split("?>", 1)[1]]
        if "no-relates" not in camera.modes:
            right = match(camera.options.uuid, message, f"http://[fe80::1]{path} http://192.0.2.1{path} {url}")
            answers += [right, match(camera.options.uuid, message, "http://127.0.0.1:9/second")]
        for answer in answers:
            hearing.sendto(answer if isinstance(answer, bytes) else answer.encode(), sender)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--mode", action="append", default=[])
    parser.add_argument("--user", default="admin", help="empty: no password is wanted")
    parser.add_argument("--password", default="p<ä>&ss")
    parser.add_argument("--skew", type=int, default=0, help="seconds that the camera's clock is ahead")
    parser.add_argument("--rtsp", type=int, default=554, help="port of its streams")
    parser.add_argument("--uuid", default="6f1c2f6e-0000-4000-8000-001122aabbcc")
    parser.add_argument("--discovery-port", type=int, default=0, help="0 takes a free one; cameras have 3702")
    options = parser.parse_args()
    camera = Camera(options)

    hearing = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    hearing.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    hearing.bind((GROUP, options.discovery_port))
    membership = struct.pack("4s4s", socket.inet_aton(GROUP), socket.inet_aton("127.0.0.1"))
    hearing.setsockopt(socket.IPPROTO_IP, socket.IP_ADD_MEMBERSHIP, membership)

    Handler.camera = camera
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    server.daemon_threads = True
    camera.port = server.server_address[1]
    threading.Thread(target=server.serve_forever, daemon=True).start()
    threading.Thread(target=answer_searches, args=(camera, hearing), daemon=True).start()
    print(f"PORT {camera.port}\nUDP {hearing.getsockname()[1]}", flush=True)
    sys.stdin.read()


main()
