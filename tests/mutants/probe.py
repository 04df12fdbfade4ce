import sys, pathlib, collections
sys.path.insert(0,'.')
from catalogue import *
root=pathlib.Path('../..').resolve()
m=all_mutants(root)
print(len(m)); print(collections.Counter(x.file for x in m))
for x in m:
    if len(sys.argv)>1 and sys.argv[1] in x.file: print(x, '   |', x.line_text[:70], x.words if x.file.endswith('.h') else '')
