"""Cameras from files, and the client that shows them."""

import json
import os
import subprocess

import meter

TILES = 64
NAME = "wall"  # begins the ids that the client under orders gives the first tiles


def make(folder, rate, number=8, seconds=8):
    """Makes H.264 files like a camera's light stream: 640x360, motion and noise, a key frame every two seconds."""
    files = []
    for index in range(number):
        file = os.path.join(folder, f"camera{index}.mp4")
        if index % 2:
            scene = f"mandelbrot=size=640x360:rate={rate}:start_x={-0.7436 + index * 0.001}"
        else:
            scene = f"testsrc2=size=640x360:rate={rate},hue=h={index * 40}"
        subprocess.run(
            ["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", f"{scene},noise=alls=6:allf=t:all_seed={index + 1}",
             "-t", str(seconds), "-c:v", "libx264", "-preset", "veryfast", "-profile:v", "main", "-bf", "0", "-g",
             str(2 * rate), "-b:v", "400k", "-maxrate", "400k", "-bufsize", "400k", "-pix_fmt", "yuv420p", file],
            check=True, stdin=subprocess.DEVNULL)
        files.append(file)
    return files


def lengthen(folder, files, times):
    """The same pictures over and over, for a player that cannot begin again by itself."""
    result = []
    for file in files:
        name = os.path.join(folder, "long-" + os.path.basename(file))
        subprocess.run(["ffmpeg", "-v", "error", "-y", "-stream_loop", str(times - 1), "-i", file, "-c", "copy", name],
                       check=True, stdin=subprocess.DEVNULL)
        result.append(name)
    return result


def client_data(folder, files):
    """A data folder of the client whose cameras play the files."""
    data = os.path.join(folder, "data")
    os.makedirs(os.path.join(data, "config"))
    entries = [{"ipncid": f"{NAME}{index:02}", "name": f"{NAME}{index:02}",
                "main": f"file://{files[index % len(files)]}", "group": ""} for index in range(TILES)]
    with open(os.path.join(data, "config", "service.json"), "w", encoding="utf-8") as config:
        json.dump({"store": "service/service.db", "cameras": entries}, config, indent=1)
    return data


def sign_in(client):
    if client.order("signin")[0] == "0":
        meter.note("# client: no cameras from files, the recorded scenes are shown instead")
