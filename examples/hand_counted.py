"""What examples must give whose trees no truth table tells: state machines and negated logic.

The cut sets are counted by hand, in the README of each example; this file turns them into the rows
of expected.csv. It reads no model: each event's figures stand here once more, so a change of one of
the two shows. "Fixed" is an unavailability, "Constant" a failure and a repair rate per hour. Names
lack the prefix DEFAULT::, and an event that must not occur has "NOT " in front of its own name.

Negated events never begin to hold, so their frequency is 0; their unavailability is what the
event's leaves of 1.
"""
import itertools
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


def chassis_controller():
    """Too many events for a truth table: counted by which parts stand for each other."""
    fixed = {
        "driver_burnt": 1e-4, "motor_open": 1e-4, "gear_jammed": 2e-5, "calliper_stuck": 4e-5,
    }
    channel = {
        "Controller{}.halted": 2e-4, "Controller{}.memory_lost": 1e-4,
        "Controller{}.clock_stopped": 3e-5, "Controller{}.core_locked": 5e-5,
        "Battery{}.flat": 2e-4, "Battery{}.fuse_blown": 5e-5,
    }
    bus = {"Bus{}.cut": 1e-4, "Bus{}.jabbered": 4e-5}
    figures = {"Stability.stopped": 2e-4, "Stability.unpowered": 1e-4,
               "Stability.wrong_request": 1e-5, "Stability.comparison_lost": 1e-4,
               "Dashboard.lamp_dark": 5e-4, "Dashboard.socket_loose": 1e-4,
               "Dashboard.buzzer_dead": 1e-3, "Dashboard.panel_halted": 2e-4,
               "Dashboard.cable_cut": 1e-4, "Dashboard.wrong_text": 2e-4,
               "ParkingBrake.motor_open": 3e-4, "ParkingBrake.switch_open": 1e-4,
               "ParkingBrake.unit_halted": 2e-4, "ParkingBrake.cable_torn": 5e-5}
    for wheel in ("FrontLeft", "FrontRight", "RearLeft", "RearRight"):
        figures.update({f"{wheel}.{name}": value for name, value in fixed.items()})
    for letter in "AB":
        figures.update({name.format(letter): q for name, q in {**channel, **bus}.items()})
    for number in "123":
        figures.update({f"Pedal{number}.open": 1e-4, f"Pedal{number}.stuck": 5e-5})
    for number in "12":
        figures.update({f"YawSensor{number}.no_rate": 2e-4, f"YawSensor{number}.offset": 1e-4,
                        f"WheelAngle{number}.no_angle": 2e-4, f"WheelAngle{number}.slipped": 1e-4})

    def both(*groups):
        return [list(events) for events in itertools.product(*groups)]

    def of(component):
        return [event for event in figures if event.startswith(component + ".")]

    commands = {letter: [name.format(letter) for name in channel] for letter in "AB"}
    data = {letter: commands[letter] + [name.format(letter) for name in bus] for letter in "AB"}
    pedals = [pair for one, other in (("1", "2"), ("1", "3"), ("2", "3"))
              for pair in both(of("Pedal" + one), of("Pedal" + other))]
    no_data = both(data["A"], data["B"]) + pedals
    front = both(of("FrontLeft"), of("FrontRight")) + no_data
    no_request = [["Stability.stopped"], ["Stability.unpowered"],
                  ["YawSensor1.no_rate", "YawSensor2.no_rate"],
                  ["WheelAngle1.no_angle", "WheelAngle2.no_angle"]]
    wrong_values = ["YawSensor1.offset", "YawSensor2.offset",
                    "WheelAngle1.slipped", "WheelAngle2.slipped"]
    no_warning = [["Dashboard.panel_halted"], ["Dashboard.cable_cut"], ["Dashboard.wrong_text"],
                  ["Dashboard.lamp_dark", "Dashboard.buzzer_dead"],
                  ["Dashboard.socket_loose", "Dashboard.buzzer_dead"]]
    to_tell = [[event] for event in commands["A"] + commands["B"]] + pedals + no_request
    return {
        "risk time": 1000,
        "events": {name: ("Fixed", value) for name, value in figures.items()},
        "trees": {
            "Diagonal": both(of("FrontLeft"), of("RearLeft")) +
                        both(of("FrontRight"), of("RearRight")) + no_data,
            "FrontAxleLost": front,
            "NoBrakes": [cut_set + [event] for cut_set in front for event in of("ParkingBrake")],
            "NotWarned": [one + other for one in to_tell for other in no_warning],
            "Skidding": no_request,
            "UnwantedBraking": [["Stability.wrong_request"]] +
                               [["Stability.comparison_lost", event] for event in wrong_values],
        },
    }


EXAMPLES["chassis-controller"] = chassis_controller()


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
