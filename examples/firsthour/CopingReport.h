#pragma once

#include "Answers.h"
#include "report/VarTable.h"

/// The variables of the report: the person, the raw scores, and what the norms make of them.
void fillVariables(const Answers& answers, VarTable& variables);
/// Writes the report in RTF.
void writeReport(VarTable& variables, const char* path);
/// Writes its graph in SVG.
void writeGraph(const VarTable& variables, const char* path);
