#pragma once

// The classes of faulttree/, declared once for headers that only point at them.

namespace FTS {

class AndGate;
class BasicEvent;
class ChildrenList;
class CircleNode;
class ComplementEvent;
class CoverageWalk;
class ExportedDeviationNode;
class ExportedDeviationProxy;
class FaultTreeGate;
class FaultTreeNode;
class GotoNode;
class InputDeviationNode;
class InputDeviationProxy;
class NegationWalk;
class NormalEvent;
class NotGate;
class OnceMarks;
class OrGate;
class OutputDeviationNode;
class OutputDeviationProxy;
class PandGate;
class PCCFNode;
class PCCFProxy;
class PorGate;
class ProxyNode;
class SandGate;
class StateProxy;
class XorGate;
enum class CloneMode : int;

}  // namespace FTS
