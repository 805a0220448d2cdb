#pragma once

// The classes of model/, declared once for headers that only point at them.

namespace FTS {

class Cause;
class CCF;
class Component;
class Deviation;
class ExportedDeviation;
class Hazard;
class HierarchicalName;
class IFailureCause;
class Implementation;
class InputDeviation;
class Line;
class LineEnds;
class Model;
class OutputDeviation;
class Perspective;
class Port;
class State;
class StateLogic;
class StateMachine;
class Subsystem;
class Transition;
struct Objective;

}  // namespace FTS
