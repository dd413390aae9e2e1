"""A short description of the machine."""
import os


def machine():
    with open("/proc/cpuinfo") as info:
        model = next((line.split(":")[1].strip() for line in info if line.startswith("model name")), "unknown")
    return f"{model}, {os.cpu_count()} cores, load {os.getloadavg()[0]:.1f} at the end"
