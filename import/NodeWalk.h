// The walk over the document: visits every node in document order, hands shape elements to their converters
// and reports each step to the log and the monitor. Called by SVGLoader once everything is prepared.
#pragma once

namespace tzsvg {

class SVGLoader;
class XmlNode;

// Walks from a node to its children and on to its following siblings. False when a converter failed or the
// user cancelled. Failures of the host throw CTzError.
//
// The walk keeps its own stack, so that a million siblings need no deep call stack; order, log lines, drawing
// indices and the place where it stops are those of a recursion (node, children, next sibling).
bool walkNodes(SVGLoader& loader, const XmlNode& start);

}  // namespace tzsvg
