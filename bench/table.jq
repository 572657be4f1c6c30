# The table of ./bench/run from the benchmark's JSON.
def digits: if . >= 100 then round
            elif . >= 10 then (. * 10 | round) / 10
            elif . >= 1 then (. * 100 | round) / 100
            else (. * 1000 | round) / 1000 end;
.benchmarks[]
| (.name | sub("/iterations:1/manual_time$"; "")) as $figure
| if .error_occurred then [$figure, "-", "-", "-", "-", "FAILED: \(.error_message)"]
  else
    [ $figure,
      "\(.ours | digits) \(.label)",
      "\(.floor | digits) \(.label)",
      (.measured | digits),
      (if .atMost then "<= \(.atMost)" else ">= \(.atLeast)" end),
      (if (.atMost and .measured <= .atMost) or (.atLeast and .measured >= .atLeast) then "met"
       else "NOT MET" end) ]
  end
| @tsv
