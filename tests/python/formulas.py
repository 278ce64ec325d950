"""The fields of the samples as formulas, as samples/ has them: x, y, z in m, t in s."""

import numpy as np

exp, hypot, pi = np.exp, np.hypot, np.pi


class channel:
    @staticmethod
    def Velocity(x, y, z, t):
        profile = 6 * z * (0.32 - z) / 0.32**2
        r2 = x * x + y * y
        ratio = 0.01 / (r2 * r2)
        return 5 * profile * (1 - ratio * (x * x - y * y)), -5 * profile * ratio * 2 * x * y, 0 * x

    @staticmethod
    def Pressure(x, y, z, t):
        vx, vy, _ = channel.Velocity(x, y, z, t)
        return 0.6 * (25 - vx * vx - vy * vy) - 2 * x

    @staticmethod
    def Temperature(x, y, z, t):
        width = 0.1 * np.sqrt(1 + np.maximum(x, 0) / 0.2)
        strength = 20 * (1 + np.tanh(x / 0.1)) * 0.1 / width
        made = 293.15 + strength * exp(-y * y / (2 * width * width)) + 2 * z / 0.32
        return np.where(np.sqrt((x - 0.9) ** 2 + y**2 + (z - 0.16) ** 2) > 0.105, made, np.nan)


class sector:
    @staticmethod
    def _across(radius):
        return (2 * radius - 0.9) / 0.3

    @staticmethod
    def Velocity(x, y, z, t):
        r2 = x * x + y * y
        s = sector._across(np.sqrt(r2))
        return -6 * y / r2, 6 * x / r2, 20 * (1 - s * s)

    @staticmethod
    def Pressure(x, y, z, t):
        return 101325 - 0.6 * 36 / (x * x + y * y) - 100 * z / 0.4

    @staticmethod
    def Temperature(x, y, z, t):
        angle = np.arctan2(y, x)
        return 300 + 20 * sector._across(hypot(x, y)) + 10 * np.cos(6 * angle) * z / 0.4


class overset:
    @staticmethod
    def Velocity(x, y, z, t):
        r2 = x * x + y * y
        ratio = 0.0625 / (r2 * r2)
        return 10 * (1 - ratio * (x * x - y * y)), -10 * ratio * 2 * x * y, 0 * x

    @staticmethod
    def Pressure(x, y, z, t):
        vx, vy, _ = overset.Velocity(x, y, z, t)
        return 0.6 * (100 - vx * vx - vy * vy)


class tank:
    turns = 100 / 60
    tip = 0.0833

    @staticmethod
    def angle(t):
        return 2 * pi * tank.turns * t

    @staticmethod
    def _wave(x, y, z, t):
        s = hypot(x, y) / tank.tip
        h = (z - 0.18) / 0.06
        phase = 6 * (np.arctan2(y, x) - tank.angle(t))
        return s * s * exp(-8 * (s - 1) ** 2 - h * h) * np.cos(phase)

    @staticmethod
    def Velocity(x, y, z, t):
        r = hypot(x, y)
        s = r / tank.tip
        h = (z - 0.18) / 0.06
        tip_speed = 2 * pi * tank.turns * tank.tip * (1 - 0.4 * exp(-t / 0.1))
        speed = tip_speed * (1 - (r / 0.25) ** 8) * (1 + 0.3 * tank._wave(x, y, z, t))
        around = speed * s / np.sqrt(1 + s**4) * (0.3 + 0.7 * exp(-h * h))
        outwards = 0.5 * speed * s * exp(1 - s) * (1 - 2 * h * h) * exp(-h * h)
        upwards = 0.3 * speed * (s - 1.2) * h * exp(-h * h)
        r = np.where(r == 0, 1, r)
        return (outwards * x - around * y) / r, (outwards * y + around * x) / r, upwards

    @staticmethod
    def Pressure(x, y, z, t):
        vx, vy, vz = tank.Velocity(x, y, z, t)
        still = 998 * 9.81 * (0.5 - z) - 499 * (vx * vx + vy * vy + vz * vz)
        return still + 100 * tank._wave(x, y, z, t)

    @staticmethod
    def Temperature(x, y, z, t):
        spread = 0.05 + 0.2 * t
        dx = x - 0.12 * np.cos(0.5 * tank.angle(t))
        dy = y - 0.12 * np.sin(0.5 * tank.angle(t))
        dz = z - (0.45 - 0.8 * t)
        return 293.15 + 20 * exp(-(dx * dx + dy * dy + dz * dz) / (2 * spread * spread))
