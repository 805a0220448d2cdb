"""What examples must give whose trees no truth table tells: state machines and negated logic.

The cut sets are counted by hand, in the README of each example; this file turns them into the rows
of expected.csv. It reads no model: each event's figures stand here once more, so a change of one of
the two shows. "Fixed" is an unavailability, "Constant" a failure and a repair rate per hour. Names
lack the prefix DEFAULT::, and an event that must not occur has "NOT " in front of its own name.

Negated events never begin to hold, so their frequency is 0; their unavailability is what the
event's leaves of 1.
"""
import math

EXAMPLES = {
    "standby-switch-over": {
        "risk time": 1000,
        "events": {
            "Main.engine": ("Constant", 2e-5, 0),
            "Main.fuel_pump": ("Constant", 5e-6, 0),
            "Standby.no_start": ("Fixed", 0.02),
            "Standby.overload": ("Constant", 1e-5, 0),
            "Transfer.stuck": ("Fixed", 0.005),
        },
        "trees": {
            "Failed State: OnStandby": [
                ["Main.engine"],
                ["Main.fuel_pump"],
            ],
            "Failed State: LossOfSupply": [
                ["Main.engine", "Standby.no_start"],
                ["Main.engine", "Standby.overload"],
                ["Main.engine", "Transfer.stuck"],
                ["Main.fuel_pump", "Standby.no_start"],
                ["Main.fuel_pump", "Standby.overload"],
                ["Main.fuel_pump", "Transfer.stuck"],
            ],
        },
    },
    "drone-flight-controller": {
        "risk time": 1,
        "events": {
            "Battery.cell_open": ("Constant", 2e-5, 0),
            "Battery.discharged": ("Fixed", 1e-3),
            "Compass.offset": ("Fixed", 5e-3),
            "Controller.filter_diverges": ("Fixed", 0.05),
            "Controller.gain_table_missing": ("Fixed", 1e-3),
            "Controller.processor_halt": ("Constant", 1e-5, 0),
            "Controller.wind_model_wrong": ("Fixed", 0.02),
            "Gps.antenna_broken": ("Constant", 5e-5, 0),
            "Gps.jammed": ("Fixed", 0.01),
            "ImuA.gyro_dead": ("Constant", 1e-4, 0),
            "ImuB.gyro_dead": ("Constant", 1e-4, 0),
        },
        "trees": {
            "Failed State: LossOfControl": [
                ["Battery.cell_open"],
                ["Battery.discharged"],
                ["Controller.processor_halt"],
                ["ImuA.gyro_dead", "ImuB.gyro_dead"],
                ["Controller.filter_diverges", "Gps.antenna_broken", "ImuA.gyro_dead"],
                ["Controller.filter_diverges", "Gps.antenna_broken", "ImuB.gyro_dead"],
                ["Controller.filter_diverges", "Gps.jammed", "ImuA.gyro_dead"],
                ["Controller.filter_diverges", "Gps.jammed", "ImuB.gyro_dead"],
            ],
            "Failed State: FlyAway": [
                ["Compass.offset", "Gps.antenna_broken"],
                ["Compass.offset", "Gps.jammed"],
                ["Controller.wind_model_wrong", "Gps.antenna_broken"],
                ["Controller.wind_model_wrong", "Gps.jammed"],
                ["Controller.gain_table_missing", "Gps.antenna_broken", "ImuA.gyro_dead"],
                ["Controller.gain_table_missing", "Gps.antenna_broken", "ImuB.gyro_dead"],
                ["Controller.gain_table_missing", "Gps.jammed", "ImuA.gyro_dead"],
                ["Controller.gain_table_missing", "Gps.jammed", "ImuB.gyro_dead"],
            ],
        },
    },
    "silent-alarm": {
        "risk time": 720,
        "events": {
            "Cabin.fire": ("Fixed", 1e-3),
            "Detector.blind": ("Constant", 1e-6, 0),
            "Detector.spurious": ("Constant", 2e-6, 0.1),
            "Supply.battery_flat": ("Fixed", 0.02),
            "Supply.mains_out": ("Constant", 1e-4, 0.5),
        },
        "trees": {
            "FalseAlarm": [
                ["Cabin.NOT fire", "Detector.spurious", "Supply.NOT battery_flat"],
                ["Cabin.NOT fire", "Detector.spurious", "Supply.NOT mains_out"],
            ],
            "MissedFire": [
                ["Cabin.fire", "Detector.NOT spurious", "Detector.blind"],
                ["Cabin.fire", "Supply.battery_flat", "Supply.mains_out"],
            ],
        },
    },
    "consensus-interlock": {
        "risk time": 2000,
        "events": {
            "Controller.valve_stuck": ("Constant", 5e-6, 0),
            "Curtain.blinded": ("Constant", 2e-6, 0),
            "Curtain.muted": ("Fixed", 1e-3),
            "Selector.manual": ("Fixed", 0.2),
            "TwoHand.welded": ("Constant", 1e-6, 0),
        },
        "trees": {
            "StrokeBlocked": [
                ["Controller.valve_stuck"],
            ],
            "StrokeOnHand": [
                ["Curtain.blinded", "Selector.NOT manual"],
                ["Curtain.muted", "Selector.NOT manual"],
                ["Selector.manual", "TwoHand.welded"],
            ],
        },
    },
}


class CountedEvent:
    def __init__(self, name, figures, risk_time):
        self.full_name = "DEFAULT::" + name.replace("NOT ", "\u00ac")
        if figures[0] == "Fixed":
            self.unavailability, self.frequency = figures[1], 0.0
        else:
            failure, repair = figures[1:]
            total = failure + repair
            self.unavailability = failure / total * (1 - math.exp(-total * risk_time))
            self.frequency = failure * (1 - self.unavailability)
        if "NOT " in name:
            self.unavailability, self.frequency = 1 - self.unavailability, 0.0


def trees(example):
    """The name and the cut sets of each tree."""
    counted, events = EXAMPLES[example], {}
    for name, sets in counted["trees"].items():
        for event in {e for s in sets for e in s} - events.keys():
            figures = counted["events"][event.replace("NOT ", "")]
            events[event] = CountedEvent(event, figures, counted["risk time"])
        yield name, [[events[e] for e in s] for s in sets]
