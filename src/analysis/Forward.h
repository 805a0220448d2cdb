#pragma once

// The classes of analysis/, declared once for headers that only point at them.

namespace FTS {

class BDDParent;
class ConsensusCutSet;
class CutSet;
class CutSetIndex;
class CutSetList;
class FaultTree;
class FMEA;
class ModuleEvent;

}  // namespace FTS
