#!/usr/bin/env python3
"""Holds the repository against one of its rules: check.py ROOT RULE [ARGUMENT...]"""

import sys
from pathlib import Path

import rules


def main():
    root, rule, arguments = Path(sys.argv[1]), sys.argv[2], [Path(name) for name in sys.argv[3:]]
    check = getattr(rules, rule)
    broken = check(*arguments) if rule == "flavours" else check(root, *arguments)
    print("\n".join(broken) if broken else f"{rule}: nothing to say")
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
