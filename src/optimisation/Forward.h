#pragma once

// The classes of optimisation/, declared once for headers that only point at them.

namespace FTS {

class CoitGA;
class Encoding;
class FixedEncoding;
class GA;
class Individual;
class NonDominatedPopulation;
class NSGA;
class TreeEncoding;

}  // namespace FTS
