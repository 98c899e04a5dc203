// The default unit table inside the shared object: the same bytes as the resource of the DLL.
    .section .rodata
    .global kelmoUnitTable, kelmoUnitTableEnd
    .hidden kelmoUnitTable, kelmoUnitTableEnd
kelmoUnitTable:
    .incbin "resources/default_unit_table.txt"
kelmoUnitTableEnd:

    .section .note.GNU-stack, "", %progbits  // without it the stack would be executable
