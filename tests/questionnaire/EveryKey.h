#pragma once

#include "questionnaire/Questionnaire.h"

namespace tessalink::test {

/// The files of a questionnaire that has every key that there is.
inline QuestionnaireFiles everyKey() {
    return {
        {"questionnaire.json",
         R"({"id": "every-key.1", "title": "Every key", "version": "1", "language": "en",
  "$schema": "questionnaire.schema.json", "licence": "none", "source": "invented",
  "responseSets": {
    "r": {"choices": [
      {"code": "0", "key": "n", "label": "no", "value": 0},
      {"code": "1", "key": "y", "label": "yes", "value": 1.5, "system": "http://x"}]},
    "n": {"whole": [-5, 5]}
  },
  "items": [
    {"id": "Q1", "text": "One", "responses": "r"},
    {"id": "Q2", "text": "Two", "responses": "r"},
    {"id": "Q3", "text": "Three", "responses": "n", "linkId": "/3"}
  ],
  "scales": [
    {"id": "Sum", "items": ["Q1", "Q2"], "title": "The sum", "score": "sum", "normFactor": 2,
     "missing": {"allowed": 1, "replace": "midpoint"}},
     {"id": "Mean", "norms": false, "score": "mean",
      "items": [{"item": "Q1", "reverse": true}, {"item": "Q3", "weight": -0.5}]}],
  "vectors": [
    {"id": "Plane", "horizontal": "Sum", "vertical": "Mean", "title": "Plane", "sectors": ["e", "w"]}
  ],
  "indexes": [
    {"id": "Omitted", "kind": "missing", "items": ["Q1"]},
    {"id": "Run", "kind": "longestRun"},
    {"id": "Share", "kind": "shares", "responses": "r", "items": ["Q1", "Q2"]},
    {"id": "Odd", "kind": "inconsistency", "pairs": [["Q1", "Q2"], {"items": ["Q2", "Q1"], "reverse": true}]}
  ],
  "fields": [
    {"id": "Name", "label": "Name", "type": "text", "length": 30, "linkId": "name"},
    {"id": "Years", "label": "Years", "type": "integer", "min": 0, "max": 120},
    {"id": "Weight", "label": "Weight", "type": "decimal", "min": 0.5, "max": 300},
    {"id": "Sex", "label": "Sex", "type": "choice", "choices": [{"code": "f", "label": "female"}]},
    {"id": "Born", "label": "Born", "type": "date"}, {"id": "Tested", "label": "Tested", "type": "date"},
    {"id": "Began", "label": "Began", "type": "time"}],
  "words": {"field": "Sex", "words": {"Subject": {"f": "she", "otherwise": "they"}}},
  "norms": {"file": "norms.csv", "scores": ["T"], "confidence": 90, "keys": {"sex": "Sex"},
            "age": {"birth": "Born", "test": "Tested"}},
  "graphs": "graphs.json",
  "derived": "derived.rtf",
  "reports": [{"id": "a", "title": "A", "template": "a.rtf"}]
})"},
        {"norms.csv", "scale,sex,age,raw,T,reliability\nSum,f,0+,0,30,0.8\nSum,f,0+,1-6,50,\n"},
        {"graphs.json",
         R"({"graphs": {"Bar": {"sections": [{"scale": {"min": 0, "max": 9, "points": ["@Sum"]}}]}}})"},
        {"derived.rtf", "@DEFINE(Twice)@LET(Twice=Sum*2)"},
        {"a.rtf", "@Twice @CALL(Bar) @Sum @INCLUDE([PART])"},
        {"PART.rtf", "@Name"}};
}

}  // namespace tessalink::test
